Function Forever(n As Long) As Long
    Forever = Forever(n + 1) + 1
End Function
Sub main()
    On Error Resume Next
    x = Forever(1)
    Debug.Print Err.Number; Err.Description ' expect:  28 Out of stack space
    On Error GoTo 0
    x = Forever(1)
End Sub
' fault: 2:15 28 Out of stack space
