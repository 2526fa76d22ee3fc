Sub main()
On Error Resume Next
s = "x"
For i = 1 To 60: s = s & s: Next
ReDim a(2000000000)
x = Again(1)
Do: n = n + 1: Loop
End Sub
Function Again(n): Again = Again(n + 1): End Function
