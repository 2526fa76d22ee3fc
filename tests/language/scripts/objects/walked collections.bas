' A For Each sees what is added behind it, and isn't moved by what goes or comes before it.
Sub main()
    Dim c As New Collection, x As Variant, y As Variant
    c.Add 1: c.Add 2: c.Add 3
    For Each x In c
        Debug.Print x;
        If x = 1 Then c.Add 4
        If x = 2 Then c.Remove 2
        If x = 3 Then c.Add 0, Before:=1
    Next
    Debug.Print ' expect:  1  2  3  4
    For Each x In c
        If x = 1 Then c.Remove 1
        For Each y In c
            Debug.Print x * 10 + y;
        Next
    Next
    Debug.Print ' expect:  0  1  3  4  11  13  14  31  33  34  41  43  44
    For Each x In c
        Set c = New Collection
        Debug.Print x; c.Count;
    Next
    Debug.Print ' expect:  1  0  3  0  4  0
End Sub
