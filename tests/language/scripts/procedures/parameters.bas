Option Explicit
Type Point
    x As Double
    y As Double
End Type
Sub Swap(ByRef a As Long, b As Long)
    Dim t As Long
    t = a: a = b: b = t
End Sub
Sub Change(ByVal n As Long, v)
    n = 99
    v = "changed"
End Sub
Function Greet(name As String, Optional greeting As String = "Hello", Optional mark) As String
    Greet = greeting & " " & name
    If Not IsMissing(mark) Then Greet = Greet & mark
End Function
Function Sum(ParamArray values())
    Dim v
    For Each v In values: Sum = Sum + v: Next
    Sum = Sum & "/" & UBound(values)
End Function
Function Fact(n As Integer) As Double
    If n <= 1 Then Fact = 1 Else Fact = n * Fact(n - 1)
End Function
Sub Move(p As Point)
    p.x = p.x + 1
End Sub
Function Numbers() As Long()
    Dim a(2) As Long
    a(1) = 7
    Numbers = a
End Function
Function NoArguments()
    NoArguments = Array(10, 20, 30)
End Function
Sub Increment(n)
    n = n + 1
End Sub
Sub main()
    Dim a As Long, b As Long, v, s As String, p As Point, list(1 To 3) As Long
    a = 1: b = 2
    Swap a, b
    Debug.Print a; b          ' expect:  2  1
    Call Swap(a, b)
    Debug.Print a; b          ' expect:  1  2
    Change a, s2v()
    Change a, v
    Debug.Print a; v          ' expect:  1 changed
    v = 5
    Change a, (v)
    Debug.Print v             ' expect:  5
    Debug.Print Greet("Ann"); Greet("Bob", "Bye"); Greet("Cy", , "!") ' expect: Hello AnnBye BobHello Cy!
    Debug.Print Greet(greeting:="Hi", name:="Dee") ' expect: Hi Dee
    Debug.Print Sum(1, 2, 3); Sum() ' expect: 6/2/-1
    Debug.Print Fact(10)      ' expect:  3628800
    Move p: Move p
    Debug.Print p.x; p.y      ' expect:  2  0
    list(2) = 5
    Increment list(2)
    Increment (list(2))
    Debug.Print list(2)       ' expect:  6
    Debug.Print Numbers()(1); UBound(Numbers) ' expect:  7  2
    Debug.Print NoArguments()(2); NoArguments(1) ' expect:  30  20
    Debug.Print Twice(21)     ' expect:  42
End Sub
Function s2v()
    s2v = "temporary"
End Function
