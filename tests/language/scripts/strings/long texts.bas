' Texts are lent to functions and grow in place; what a function changes meanwhile isn't seen by the others.
Dim all As String
Function change() As Long
    all = "changed"
    change = 2
End Function
Function reset() As String
    all = "new"
    reset = "!"
End Function
Sub main()
    Dim s As String, v As Variant, f As String * 4, i As Long, n As Long
    For i = 1 To 20000
        s = s & "ab" & CStr(i Mod 10)
    Next
    Debug.Print Len(s); Right$(s, 6) ' expect:  60000 ab9ab0
    For i = 1 To Len(s)
        If Mid$(s, i, 1) = "a" Then n = n + 1
        If Asc(Mid$(s, i, 1)) = 98 Then n = n + 1
        If i Mod 3 = 0 Then Mid$(s, i, 1) = "-"
    Next
    Debug.Print n; InStr(59989, s, "b-"); Left$(s, 7) ' expect:  40000  59990 ab-ab-a
    all = "abcdef"
    Debug.Print Mid$(all, change(), 3) ' expect: bcd
    all = "old"
    all = all & reset()
    Debug.Print all ' expect: old!
    all = all & all & all
    Debug.Print all ' expect: old!old!old!
    all = all & Null & 5 & Empty
    Debug.Print all ' expect: old!old!old!5
    v = 1: v = v & 2: v = v & Null
    Debug.Print v; TypeName(v) ' expect: 12String
    f = "ab": f = f & "cd"
    Debug.Print f; "|" ' expect: ab  |
    v = Null: v = v & Null
    Debug.Print IsNull(v) ' expect: True
    Dim w As String: w = "xyz"
    Mid$(w, 2) = w
    Debug.Print w; StrComp(w, "XXY", vbTextCompare); InStr(1, w, "Y", vbTextCompare); Join(Split(w, "x"), "-"); UBound(Filter(Array(w, "b"), "xx")) ' expect: xxy 0  3 --y 0
End Sub
