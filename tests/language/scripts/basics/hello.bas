Option Explicit
Sub main()
    Dim s As String
    s = "Hello" & ", " & "world"
    Debug.Print s        ' expect: Hello, world
    Debug.Print 1; -2; 3.5  ' expect:  1 -2  3.5
    Debug.Print "a", "b"    ' expect: a             b
    Debug.Print True; Null; Empty; "x"   ' expect: TrueNullx
End Sub
