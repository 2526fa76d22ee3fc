Private Sub Fails(ByVal which As Integer)
    On Error Resume Next
    Dim result As Variant, numbers(2) As Long
    Select Case which
    Case 1: result = MidB("abc", 0)
    Case 2: result = AscB("")
    Case 3: result = ChrB(256)
    Case 4: result = StrConv("a", 4)
    Case 5: result = StrConv("a", vbUnicode + vbFromUnicode)
    Case 6: result = LenB(numbers)
    Case 7: result = LeftB("a", -1)
    Case 8: result = InStrB(0, "a", "a")
    Case 9: result = InStrB(1, "a", "A", vbTextCompare)
    End Select
    Debug.Print which & ":" & Err.Number & " ";
End Sub

Sub main()
    Dim s As String, i As Integer, b() As Byte, v As Variant
    Debug.Print LeftB("abc", 4); RightB("abc", 2); MidB("abcd", 3, 4); "|"; MidB("abc", 9); "|"; LeftB("ab", 99) ' expect: abcbc||ab
    Debug.Print LenB("abc"); LenB(""); LenB(LeftB("abc", 3)); AscB("a"); AscB(ChrW(&H263A)); AscB(MidB(ChrW(&H263A), 2, 1)) ' expect:  6  0  3  97  58  38
    Debug.Print InStrB("abc", "b"); InStrB(4, "abcb", "b"); InStrB("abc", "x"); InStrB("abc", ChrB(0)); InStrB("", "a"); InStrB(9, "abc", "a") ' expect:  3  7  0  2  0  0
    ' The code page's bytes, of which there may be an odd number
    Debug.Print LenB(StrConv("abc", vbFromUnicode)); LenB(StrConv("a" & ChrW(&H20AC), vbFromUnicode)); LenB(StrConv("", vbFromUnicode)) ' expect:  3  2  0
    Debug.Print StrConv(StrConv("Gr" & ChrW(252) & ChrW(223) & "e", vbFromUnicode), vbUnicode) = "Gr" & ChrW(252) & ChrW(223) & "e" ' expect: True
    Debug.Print StrConv(LeftB(StrConv("abcdef", vbFromUnicode), 3), vbUnicode); StrConv(MidB(StrConv("abcdef", vbFromUnicode), 4, 1), vbUnicode) ' expect: abcd
    Debug.Print Len(StrConv("ab", vbUnicode)); AscW(Mid(StrConv("ab", vbUnicode), 2)); CStr(StrConv("ab CD!", vbUpperCase + vbFromUnicode)) = CStr(StrConv("AB CD!", vbFromUnicode)) ' expect:  4  0 True
    v = StrConv("A" & ChrW(&H20AC), vbFromUnicode)
    For i = 0 To UBound(v)
        Debug.Print Hex(v(i)); " ";
    Next
    Debug.Print TypeName(v) ' expect: 41 80 Byte()
    ' Bytes as a text
    ReDim b(3)
    b(0) = 65: b(2) = &H3A: b(3) = &H26
    s = b
    Debug.Print Len(s); AscW(s); Hex(AscW(Mid(s, 2))); " "; StrConv(b, vbUnicode) = "A" & vbNullChar & ":&"; ChrB(65) & "x"; LenB(b) ' expect:  2  65 263A TrueAx 4
    Debug.Print IsNull(LeftB(Null, 1)); IsNull(LenB(Null)); IsNull(InStrB(Null, "a")); IsNull(StrConv(Null, vbUnicode)) ' expect: TrueTrueTrueTrue
    Debug.Print StrConv("abc", vbFromUnicode) = StrConv("abc", vbFromUnicode); StrConv("abc", vbFromUnicode) = StrConv("abd", vbFromUnicode); b & "!" = s & "!" ' expect: TrueFalseTrue
    For i = 1 To 9
        Fails i
    Next
    Debug.Print ' expect: 1:5 2:5 3:5 4:5 5:5 6:13 7:5 8:5 9:5
End Sub
