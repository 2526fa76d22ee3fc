Sub main()
    Debug.Print Left("hello", 2); Right("hello", 3); Mid("hello", 2, 3); Mid("hello", 4); Mid("x", 5) ' expect: helloelllo
    Debug.Print Len("héllo"); Len(ChrW(26085) & ChrW(26412)); Len(12345) ' expect:  5  2  5
    Debug.Print UCase("abÿ"); LCase("ÀB"); "["; Trim("  a b "); "]"; LTrim(" x"); RTrim("y "); "|" ' expect: ABŸàb[a b]xy|
    Debug.Print InStr("abcabc", "c"); InStr(4, "abcabc", "c"); InStr("abc", "C"); InStr(1, "abc", "C", vbTextCompare); InStr("abc", ""); InStr("", "a") ' expect:  3  6  0  3  1  0
    Debug.Print InStrRev("a\b\c", "\"); InStrRev("a\b\c", "\", 3); InStrRev("abc", "x") ' expect:  4  2  0
    Debug.Print Replace("a-b-c", "-", "+"); Replace("aAa", "a", "x", , , vbTextCompare); Replace("aaa", "a", "b", 2, 1) ' expect: a+b+cxxxba
    Debug.Print StrComp("a", "b"); StrComp("b", "a"); StrComp("A", "a", 1) ' expect: -1  1  0
    Debug.Print String(3, "xy"); String(2, 65); "["; Space(2); "]"; StrReverse("abc") ' expect: xxxAA[  ]cba
    Debug.Print Asc("A"); AscW(ChrW(8217)); Asc(Chr(146)); Chr(65); AscW(ChrW(65000)) ' expect:  65  8217  146 A-536
    Debug.Print StrConv("hello big world", vbProperCase) ' expect: Hello Big World
    Debug.Print "quote "" inside"; vbTab & "x" = Chr(9) & "x" ' expect: quote " insideTrue
    Dim s As String
    s = "abcdef"
    Mid(s, 2, 3) = "XY": Debug.Print s ' expect: aXYdef
    Mid$(s, 5) = "12345": Debug.Print s ' expect: aXYd12
    LSet s = "ab": Debug.Print s; "|" ' expect: ab    |
    RSet s = "ab": Debug.Print s; "|" ' expect:     ab|
    Debug.Print Left$("abc", 1) & Right$("abc", 1) & Trim$(" t ") ' expect: act
    Debug.Print "line " & _
        "continued " & _
        "twice" ' expect: line continued twice
    On Error Resume Next
    Debug.Print Left("abc", -1): Debug.Print Err.Number ' expect:  5
    Err.Clear: Debug.Print Mid("abc", 0): Debug.Print Err.Number ' expect:  5
    Err.Clear: Debug.Print Chr(300): Debug.Print Err.Number ' expect:  5
    Err.Clear: Debug.Print Asc(""): Debug.Print Err.Number ' expect:  5
End Sub
