Sub main()
    Dim v, a(1 To 3) As Long
    a(1) = 10: a(2) = 20: a(3) = 30
    For Each v In a
        If v = 20 Then GoTo NextOne
        Debug.Print v;
NextOne:
    Next v
    Debug.Print ' expect:  10  30
    For Each v In Array("x", 2, Nothing)
        Debug.Print TypeName(v);
    Next
    Debug.Print ' expect: StringIntegerNothing
    For Each v In Split("")
        Debug.Print "never"
    Next
    For Each v In Application
        Debug.Print v; ","; ' two elements of the object
        If v = "one" Then Debug.Print "(first)";
    Next
    Debug.Print ' expect: one,(first)two,
    Dim c As New Collection
    c.Add "a": c.Add "b", "key"
    For Each v In c: Debug.Print v;: Next
    Debug.Print c("KEY"); c.Count ' expect: abb 2
End Sub
