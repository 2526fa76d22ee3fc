Option Explicit
Dim tries As Integer
Sub Loops()
    Dim i As Integer, a(2) As Integer
    On Error GoTo Fail
    For i = 1 To 4
        a(i) = 10 \ (i - 2)
        Debug.Print i;
    Next
    Debug.Print "out"
    Exit Sub
Fail:
    Debug.Print "["; Err.Number; "]";
    Resume Next
End Sub
Sub LeavesByGoTo()
    On Error GoTo Fail
    Error 5
Fail:
    ' Left without Resume: the handler still runs, so a second error goes up.
    On Error GoTo Again
    Error 6
Again:
    Debug.Print "never"
End Sub
Sub Recovers()
    On Error GoTo Fail
    Error 5
Fail:
    On Error GoTo -1
    On Error GoTo Again
    Error 6
Again:
    Debug.Print "again"; Err.Number
End Sub
Function Calls() As Integer
    On Error Resume Next
    Calls = Fails() + 1
    Debug.Print "Calls"; Calls; Err.Number
End Function
Function Fails() As Integer
    Fails = 5
    Error 1234
End Function
Sub main()
    Loops
    ' expect:  1 [ 11 ] 2 [ 9 ] 3 [ 9 ] 4 out
    On Error Resume Next
    LeavesByGoTo
    Debug.Print Err.Number ' expect:  6
    Recovers ' expect: again 6
    Debug.Print Calls
    ' expect: Calls 0  1234
    ' expect:  0
    Resume
    Debug.Print Err.Number ' expect:  20
    Err.Clear
    Return
    Debug.Print Err.Number; Err.Source = "" ' expect:  3 True
    Err.Number = 13: Debug.Print Err; Err.Description ' expect:  13 Return without GoSub
End Sub
