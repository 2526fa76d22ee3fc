Sub Inner()
    On Error GoTo Fail
    Err.Raise 5
    Exit Sub
Fail:
    ' A handler's own error goes to the caller.
    Err.Raise 6
End Sub
Sub main()
10  On Error GoTo Fail
20  Inner
30  Debug.Print "resumed"
    On Error GoTo 0
40  Debug.Print 1 \ 0
    Exit Sub
Fail:
    Debug.Print Err.Number; Erl
    Resume Next
End Sub
' expect:  6  20
' expect: resumed
' fault: 14:19 11 Division by zero
