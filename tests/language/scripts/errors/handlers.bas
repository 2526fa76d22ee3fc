Option Explicit
Sub Thrower(n As Long)
    Err.Raise n, "Thrower", "number " & n
End Sub
Sub Deep()
    Thrower 1000
    Debug.Print "not reached"
End Sub
Sub HandlesItself()
    On Error GoTo Fail
    Deep
    Exit Sub
Fail:
    Debug.Print "caught"; Err.Number; Err.Source; ": "; Err.Description
    Resume Done
Done:
    Debug.Print "done"; Err.Number
End Sub
Sub Retries()
    Dim n As Integer, d As Integer
    On Error GoTo Fix
    n = 10 \ d
    Debug.Print "n ="; n
    Exit Sub
Fix:
    d = 5
    Resume
End Sub
Sub GoesOn()
    On Error GoTo Note
    Debug.Print 1 \ 0
    Debug.Print "next statement"
    Exit Sub
Note:
    Debug.Print "noted"; Err
    Resume Next
End Sub
Sub Ignores()
    Dim v
    On Error Resume Next
    v = 1 / 0
    Debug.Print Err.Number; Err.Description
    Err.Clear
    Debug.Print Err.Number
    v = CInt("x")
    If Err.Number <> 0 Then Debug.Print "mismatch"; Err.Number
    On Error GoTo 0
    Debug.Print Err.Number
    v = Application.NoSuchMember
End Sub
Sub main()
    HandlesItself
    ' expect: caught 1000 Thrower: number 1000
    ' expect: done 0
    Retries     ' expect: n = 2
    GoesOn
    ' expect: noted 11
    ' expect: next statement
    On Error Resume Next
    Ignores
    ' expect:  11 Division by zero
    ' expect:  0
    ' expect: mismatch 13
    ' expect:  0
    Debug.Print Err.Number; Err.Description ' expect:  438 Object doesn't support this property or method
    Application.Fail
    Debug.Print Err.Number; Err.Description; Err.Source ' expect: -2147467259 The document is lockedModelDoc2
    Error 53
    Debug.Print Err.Description; Error(76) ' expect: File not foundPath not found
End Sub
