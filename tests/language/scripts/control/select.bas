Function Kind(v)
    Select Case v
        Case 1, 2: Kind = "low"
        Case 3 To 5: Kind = "middle"
        Case Is >= 100: Kind = "huge"
        Case "a" To "f"
            Kind = "letter"
        Case Else
            Kind = "other"
    End Select
End Function
Sub main()
    Debug.Print Kind(1); Kind(4); Kind(500); Kind(50) ' expect: lowmiddlehugeother
    Select Case True
        Case 1 > 2: Debug.Print "no"
        Case 2 > 1: Debug.Print "first true" ' expect: first true
        Case True: Debug.Print "too late"
    End Select
    Select Case "x"
    End Select
    Select Case 5
        Case 1: Debug.Print "no"
    End Select
    Debug.Print "end" ' expect: end
End Sub
