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
    Dim z As NoSuchType
    Exit Function
    Exit For
    v
    Two = 5
    .Name = 3
End Sub
' error: 20:14 User-defined type not defined: NoSuchType
' error: 21:10 Exit Function not allowed in a Sub
' error: 22:5 Exit For not within For...Next
' error: 25:5 A member without an object stands outside of a With block
