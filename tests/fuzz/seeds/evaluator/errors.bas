Sub main()
On Error Resume Next
x = 1 / 0
Err.Raise 5, "a", "b"
On Error GoTo fail
Dim a(3) As Integer
a(4) = 1
Exit Sub
fail:
Debug.Print Err.Number; Err.Description
Resume Next
End Sub
