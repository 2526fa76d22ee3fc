Sub Show(ByVal first As Variant, Optional ByVal second As Variant = "none")
    Debug.Print first; second
End Sub
Function Twice(ByVal number As Long) As Long
    Twice = 2 * number
End Function
Sub main()
    Dim names As New Collection
    Dim found As New Collection
    names.Add "one", "first"
    names.Add "two", "second"
    With names
        found.Add .Count
        found.Add !second
        Show .Count, .Item(1) ' expect:  2 one
        Show .Item(2) ' expect: twonone
        Show !first, !second ' expect: onetwo
        Debug.Print .Count; .Item(2) ' expect:  2 two
        Debug.Print Twice(.Count) + .Count ' expect:  6
        Show -.Count ' expect: -2 none
        With found
            .Add .Count
            Show .Item(3), names.Count ' expect:  2  2
        End With
        ' A continued line goes on with what stands before.
        Debug.Print names _
            .Count ' expect:  2
        found _
            .Add 7
    End With
    ' Without a block there is nothing else that it could mean.
    Debug.Print found .Count ' expect:  4
    On Error Resume Next
    With Err
        .Number = 7
        Err.Raise .Number + 5
    End With
    Debug.Print Err.Number ' expect:  12
End Sub
