Sub main()
For i = 1 To 10 Step 2: Next i
For Each v In Array(1, 2): Exit For: Next
Do While x < 3: x = x + 1: Loop
Do: Loop Until True
While False: Wend
If a Then b = 1 Else b = 2
If a Then
ElseIf b Then
Else
End If
Select Case x
Case 1, 2 To 3, Is > 4
Case Else
End Select
With Err
.Clear
End With
GoSub sub1: GoTo done
sub1: Return
done:
On Error GoTo done
Resume Next
Open "a" For Input As #1
Print #1, a; b, Tab(3)
Line Input #1, s
Close
End Sub
