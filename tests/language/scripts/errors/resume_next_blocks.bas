Sub main()
    On Error Resume Next
    ' A failing condition goes into the block, as the next statement stands there.
    If 1 / 0 = 1 Then
        Debug.Print "inside" ' expect: inside
    Else
        Debug.Print "else"
    End If
    For i = 1 To 2
        x = 1 \ 0
        Debug.Print "turn"; i
    Next
    ' expect: turn 1
    ' expect: turn 2
    If True Then
        Debug.Print "a" ' expect: a
        x = 1 \ 0
    Else
        Debug.Print "never"
    End If
    Select Case 1
        Case 1
            x = 1 \ 0
        Case 2
            Debug.Print "never"
    End Select
    If True Then x = 1 \ 0 Else Debug.Print "never"
    With Application
        .NoSuch
        Debug.Print "still in With" ' expect: still in With
    End With
    Debug.Print "end"; Err.Number ' expect: end 438
End Sub
