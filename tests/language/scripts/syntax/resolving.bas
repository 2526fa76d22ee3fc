Option Explicit
Const C = 1
Sub Two(a As Long, b As Long)
End Sub
Sub main()
    Dim s As String, v, o As Object, list(2) As Long
    x = 5
    C = 2
    Missing 1
    Two 1
    Two 1, 2, 3
    Two a:=1, z:=2
    Two s, 2
    s.Name = 1
    s(1) = 2
    Debug.Print Left("a")
    list = v
    ReDim list(5)
    Set s = o
    v
    Two = 5
End Sub

' error: 7:5 Variable not defined: x
' error: 8:5 Assignment to constant not permitted
' error: 9:5 Sub or Function not defined: Missing
' error: 10:5 Argument not optional: b
' error: 11:5 Wrong number of arguments or invalid property assignment
' error: 12:5 Named argument not found: z
' error: 13:9 ByRef argument type mismatch
' error: 14:5 Invalid qualifier
' error: 15:5 Expected array
' error: 16:17 Argument not optional
' error: 17:5 Can't assign to an array
' error: 18:5 Array already dimensioned
' error: 19:9 Object required
' error: 20:5 Expected: Sub, Function or Property; v is a variable
' error: 21:5 Argument not optional: a
