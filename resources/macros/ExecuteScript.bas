Option Explicit

Dim znApp As Object

Sub main()
    Set znApp = Application.Zentrel
End Sub
