#If VBA7 Then
Sub main(
If x Then
For i = (1 + 
#Else
End Sub
