Type P
 x As Double
 n As String
End Type
Sub main()
Dim c As New Collection, p As P, a() As Variant
c.Add 1, "one": c.Add 2, , 1
For Each v In c: Debug.Print v: Next
Set d = CreateObject("Scripting.Dictionary")
d("k") = Array(1, 2, 3): d.Remove "k"
ReDim a(1 To 3, 0 To 2): a(2, 1) = "z": ReDim Preserve a(1 To 3, 0 To 4)
p.x = 2: q = p.x ^ 0.5
LSet s = "a": Mid(t, 1) = "b"
Erase a
End Sub
