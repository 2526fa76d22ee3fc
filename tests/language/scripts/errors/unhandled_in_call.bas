Option Explicit
Function Half(n As Integer) As Integer
    Dim list(3) As Long
    Half = list(n)
End Function
Sub main()
    Debug.Print "before" ' expect: before
    Debug.Print Half(4)
End Sub
' fault: 4:12 9 Subscript out of range
