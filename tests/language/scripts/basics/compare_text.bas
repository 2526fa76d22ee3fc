Option Compare Text
Sub main()
    Debug.Print "abc" = "ABC"; "Sheet A" Like "sheet [a-b]"; InStr("xABC", "b") ' expect: TrueTrue 3
    Select Case "PDF"
        Case "pdf": Debug.Print "same" ' expect: same
        Case Else: Debug.Print "other"
    End Select
End Sub
