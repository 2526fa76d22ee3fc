' Without Option Explicit a name that is declared nowhere is a variable of its own in each procedure.
Function Fib(n)
    If n < 2 Then
        Fib = n
    Else
        Fib = Fib(n - 1) + Fib(n - 2)
    End If
End Function
Sub Other()
    x = 5
End Sub
Sub main()
    x = 1
    Other
    y$ = "text"
    Debug.Print x; Fib(15); y$; IsEmpty(z) ' expect:  1  610 textTrue
    ReDim made(2)
    made(1) = "made"
    Debug.Print made(1) ' expect: made
End Sub
