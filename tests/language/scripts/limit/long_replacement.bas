' A text that would take a gigabyte ends in an error, and the macro goes on.
Sub main()
    Dim parts(1 To 300) As String, i As Long, long1 As String
    long1 = String(1000000, "a")
    For i = 1 To 300
        parts(i) = long1
    Next
    On Error Resume Next
    Debug.Print Len(Replace(long1, "a", "aaaa")) ' expect:  4000000
    Debug.Print Len(Replace(long1, "a", String(1000, "b")))
    Debug.Print Err.Number; Err.Description ' expect:  14 Out of string space
    Err.Clear
    Debug.Print Len(Join(parts, ""))
    Debug.Print Err.Number ' expect:  14
    Err.Clear
    Debug.Print Len(Join(Array("a", "b"), long1)) ' expect:  1000002
End Sub
