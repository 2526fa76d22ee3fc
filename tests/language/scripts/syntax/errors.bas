Option Explicit
Sub main()
    Dim a As Integer
    a = 1 +
    b = "open
    If a = 1 The
    Call
    a = (1
    GoTo Nowhere
    For a = 1 To 2
    Next
    Foo(1, 2)
    x ?
End Sub
' error: 4:12 Expected: expression
' error: 5:9 The text has no closing quote
' error: 6:14 Expected: Then or GoTo
' error: 7:9 Expected: statement
' error: 8:11 Expected: )
' error: 9:10 Label not defined: Nowhere
' error: 12:14 Expected: =
' error: 13:7 This character has no meaning here
