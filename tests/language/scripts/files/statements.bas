Option Explicit
Sub main()
    Dim f As Integer, line1 As String, a, b, c, d, n As String
    f = FreeFile
    MkDir "C:\work"
    Open "C:\work\out.txt" For Output As #f
    Print #f, "first"; " line"
    Print #f, 1; -2, "zone"
    Print #f, "no end";
    Print #f, Spc(2); "x"; Tab(20); "y"
    Write #f, "text", 5, True, Null, #3/5/2018#
    Close #f
    Open "C:\work\out.txt" For Append As f
    Print #f, "appended"
    Debug.Print FreeFile; LOF(f) > 0 ' expect:  2 True
    Close
    Open "C:\work\out.txt" For Input As #1
    Do While Not EOF(1)
        Line Input #1, line1
        Debug.Print line1
    Loop
    ' expect: first line
    ' expect:  1 -2         zone
    ' expect: no end  x          y
    ' expect: "text",5,#TRUE#,#NULL#,#2018-03-05#
    ' expect: appended
    Close #1
    Open "C:\work\out.txt" For Input As #3
    Line Input #3, line1: Line Input #3, line1: Line Input #3, line1
    Input #3, a, b, c, d
    Debug.Print a; b; c; IsNull(d); TypeName(b) ' expect: text 5 TrueTrueDouble
    Close #3
    Open "C:\work\out.txt" For Input As #3
    Debug.Print Input(5, #3); Loc(3); Seek(3) ' expect: first 5  6
    Seek #3, 1: Debug.Print Input(2, 3) ' expect: fi
    Close #3
    Name "C:\work\out.txt" As "C:\work\new.txt"
    FileCopy "C:\work\new.txt", "C:\work\other.txt"
    Debug.Print FileLen("C:\work\other.txt") = FileLen("C:\work\new.txt"); Year(FileDateTime("C:\work\new.txt")) ' expect: True 2018
    n = Dir("C:\work\*.txt")
    Do While n <> ""
        Debug.Print n;
        n = Dir
    Loop
    Debug.Print ' expect: new.txtother.txt
    Debug.Print Dir("C:\work\none.txt") = ""; Dir("C:\work\new.txt"); Dir("C:\wor*"); Dir("C:\wor*", vbDirectory) ' expect: Truenew.txtwork
    SetAttr "C:\work\new.txt", vbReadOnly
    Debug.Print GetAttr("C:\work\new.txt") And vbReadOnly; GetAttr("C:\work") And vbDirectory ' expect:  1  16
    On Error Resume Next
    Kill "C:\work\new.txt": Debug.Print Err.Number ' expect:  70
    SetAttr "C:\work\new.txt", vbNormal
    Err.Clear: RmDir "C:\work": Debug.Print Err.Number ' expect:  75
    Err.Clear: Kill "C:\work\*.txt": Debug.Print Err.Number ' expect:  0
    Kill "C:\work\none.txt": Debug.Print Err.Number ' expect:  53
    Err.Clear: RmDir "C:\work": Debug.Print Err.Number; Dir("C:\work", vbDirectory) = "" ' expect:  0 True
    Err.Clear: Open "C:\missing\x.txt" For Output As #1: Debug.Print Err.Number ' expect:  76
    Err.Clear: Open "C:\x.txt" For Input As #1: Debug.Print Err.Number ' expect:  53
    Err.Clear: Print #7, "x": Debug.Print Err.Number ' expect:  52
    Err.Clear: MkDir "C:\temp": Debug.Print Err.Number ' expect:  75
    Open "C:\x.txt" For Output As #1
    Err.Clear: Open "C:\y.txt" For Output As #1: Debug.Print Err.Number ' expect:  55
    Err.Clear: Line Input #1, line1: Debug.Print Err.Number ' expect:  54
    Err.Clear: Kill "C:\x.txt": Debug.Print Err.Number ' expect:  55
    Close #1
    Open "C:\x.txt" For Input As #1
    Err.Clear: Line Input #1, line1: Debug.Print Err.Number ' expect:  62
End Sub
