Sub main()
    Dim v, w, s As String
    v = "abc": w = 5: s = "5"
    Debug.Print v > w; v = "abc"; w = s ' expect: TrueTrueTrue
    Select Case w
        Case "5": Debug.Print "as text" ' expect: as text
    End Select
    Debug.Print Empty = 0; Empty = ""; v = Empty ' expect: TrueTrueFalse
    v = "5": Debug.Print v = 5; v = w ' expect: TrueFalse
    On Error Resume Next
    v = "abc": Debug.Print v = 5
    Debug.Print Err.Number ' expect:  13
End Sub
