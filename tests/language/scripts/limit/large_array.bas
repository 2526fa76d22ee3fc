Sub main()
    On Error Resume Next
    ReDim a(2000000000)
    Debug.Print Err.Number ' expect:  7
    Err.Clear
    ReDim b(1000, 1000, 1000)
    Debug.Print Err.Number ' expect:  7
    Err.Clear
    s = String(2000000000, "x")
    Debug.Print Err.Number ' expect:  14
    s = String(5, "x") & Space(0)
    Debug.Print Len(s) ' expect:  5
End Sub
