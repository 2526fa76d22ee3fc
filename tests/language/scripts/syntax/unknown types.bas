' A type that nobody knows is told once, where it stands first, and hides no other error.
Dim first As Widget
Type Chest
    Inside As New Widget
End Type
Function Make(ByVal one As Widget, ParamArray others()) As Widget
    Dim copy As Widget
    Set Make = New Widget
End Function
Sub main()
    Dim chest As Chest, other As gadget
    For i = 1 To 2
End Sub
Sub Last(given As GADGET)
    x = = 1
End Sub
' error: 2:14 User-defined type not defined: Widget
' error: 11:34 User-defined type not defined: gadget
' error: 12:5 For without Next
' error: 15:9 Expected: expression
