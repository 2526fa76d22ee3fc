Option Explicit
Private counter As Integer
Public Const Limit As Long = 3
Const Name1 = "A" & "B", Twice2 = Limit * 2
Dim items(Limit) As String
Function NextNumber() As Integer
    Static n As Integer
    n = n + 1
    NextNumber = n
End Function
Static Sub Tick()
    Dim t
    t = t + 1
    Debug.Print t;
End Sub
Sub Shadow()
    Dim counter As String
    Const Limit = "local"
    counter = Limit
    Debug.Print counter
End Sub
Sub main()
    NextNumber
    NextNumber
    Debug.Print NextNumber ' expect:  3
    Tick
    Call Tick: Debug.Print ' expect:  1  2
    counter = 7
    Shadow                 ' expect: local
    Debug.Print counter; Name1; Twice2; UBound(items) ' expect:  7 AB 6  3
End Sub
