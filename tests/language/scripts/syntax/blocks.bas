Sub main()
    If True Then
        Debug.Print 1
    For i = 1 To 2
    End If
    Wend
End Sub
Sub Twice()
End Sub
Sub Twice()
End Sub
Dim Loose As Integer
Debug.Print "outside"
Property Get P()
' error: 4:5 For without Next
' error: 6:5 Wend without the beginning of its block
' error: 10:5 Duplicate declaration in current scope: Twice
' error: 13:1 Expected: a declaration; statements must stand in a Sub or Function
' error: 14:1 Property procedures belong to class modules, which macros don't have
