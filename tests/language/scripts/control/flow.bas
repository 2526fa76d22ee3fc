Option Explicit
Sub main()
    Dim i As Integer, j As Integer, s As String
    If 1 = 2 Then
        Debug.Print "no"
    ElseIf 2 = 2 Then
        Debug.Print "elseif" ' expect: elseif
    Else
        Debug.Print "no"
    End If
    If True Then Debug.Print "one"; : Debug.Print " line" ' expect: one line
    If False Then Debug.Print "no" Else Debug.Print "else" ' expect: else
    If True Then If False Then Debug.Print "no" Else Debug.Print "inner" ' expect: inner
    For i = 1 To 3: s = s & i: Next
    Debug.Print s; i ' expect: 123 4
    For i = 10 To 1 Step -4: Debug.Print i;: Next i
    Debug.Print ' expect:  10  6  2
    For i = 1 To 2
        For j = 1 To 2
            Debug.Print i & j;
    Next j, i
    Debug.Print ' expect: 11122122
    i = 0
    Do While i < 3: i = i + 1: Loop
    Do: i = i + 1: Loop Until i >= 10
    Do Until i = 12
        i = i + 1
        If i = 11 Then Exit Do
    Loop
    Do: i = i + 1: Loop While i < 15
    While i < 20
        i = i + 1
    Wend
    Debug.Print i ' expect:  20
    For i = 1 To 5
        If i = 3 Then Exit For
    Next
    Debug.Print i ' expect:  3
    For i = 5 To 1: Debug.Print "never": Next
    Dim d As Double, n As Integer
    For d = 0 To 1 Step 0.25: n = n + 1: Next
    Debug.Print n; d ' expect:  5  1.25
    GoTo Skip
    Debug.Print "skipped"
Skip:
    On Error GoTo 0
    GoSub Part ' expect: part
               ' expect: back
    Debug.Print "back"
    Exit Sub
Part:
    Debug.Print "part" : Rem
    Return
End Sub
