' Each holds the next one, so that the last to go would take all others with it, one inside the other.
Sub main()
    Dim inner As Object, outer As Object, i As Long
    Set inner = New Collection
    For i = 1 To 100000
        Set outer = New Collection
        outer.Add inner
        Set inner = outer
    Next
    Set outer = Nothing
    Set inner = Nothing
    Debug.Print "collections" ' expect: collections
    Set inner = CreateObject("Scripting.Dictionary")
    For i = 1 To 100000
        Set outer = CreateObject("Scripting.Dictionary")
        Set outer("x") = inner
        Set inner = outer
    Next
    Set outer = Nothing
    Set inner = Nothing
    Debug.Print "dictionaries" ' expect: dictionaries
    Set inner = New Collection
    For i = 1 To 100000
        Set outer = New Collection
        outer.Add Array(i, inner)
        Set inner = outer
    Next
    Set outer = Nothing
    inner.Remove 1
    Debug.Print inner.Count ' expect:  0
End Sub
