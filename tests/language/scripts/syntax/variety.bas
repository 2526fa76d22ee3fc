Attribute VB_Name = "ZNMacro1"
option explicit
' Odd but allowed ways to write things.
public sub PrintBoth(a, optional b = "none"): debug.print a & "/" & b: end sub
Function Add&(ByVal a&, ByVal b&): Add = a + b: End Function
Private Function NoParens As String
    NoParens = "np"
End Function
Sub main()
    Dim i%, s$, [odd name] As Integer, name As String, text, o As Object: i = 1: [odd name] = 2
    PrintBoth (i) + 1, "x"          ' expect: 2/x
    PrintBoth (i)                   ' expect: 1/none
    PrintBoth -1                    ' expect: -1/none
    PrintBoth "a" & _
        "b", _
        b:="c"                      ' expect: ab/c
    Call PrintBoth(b:=1, a:=2)      ' expect: 2/1
    Debug.Print Add&(1, 2); Add(3, 4); NoParens; NoParens() ' expect:  3  7 npnp
    name = "variable": text = "t": Debug.Print name; text; [odd name] ' expect: variablet 2
    If i = 1 Then: Debug.Print "colon" ' expect: colon
    If i = 1 Then ' a comment
        Debug.Print "block" ' expect: block
    Else: Debug.Print "no"
    End If
    If i = 2 Then Debug.Print "no" Else If i = 1 Then Debug.Print "else if" ' expect: else if
    If i = 1 GoTo there
    Debug.Print "skipped"
there: Debug.Print "there" ' expect: there
    Let s = "let": Debug.Print s ' expect: let
    Rem a remark: Debug.Print "no"
    Set o = Application: o.Type = 5: o.Next = 6
    Debug.Print o.Type + o.Next; o!Type ' a member may bear any name
    ' expect:  11  5
    With o: .Title = "w": Debug.Print .Title; !Title: End With ' expect: ww
    Debug.Print 1.5e3; .5; 1#; 2@; 3!; 4&; 5%; &h1F; 1D2 ' expect:  1500  0.5  1  2  3  4  5  31  100
    For i = 1 To 3: If i = 2 Then Exit For
    Next: Debug.Print i ' expect:  2
    Do While True: Exit Do: Loop
    Dim a(1 To 2, 1 To 2): a(1, 2) = "cell": Debug.Print a(1, 2) ' expect: cell
    Debug.Print Not Nothing Is o; Not o Is Nothing ' expect: TrueTrue
    Debug.Print Strings.Len("abc"), VBA.Trim(" x "); Math.Abs(-1) ' expect:  3            x 1
    If True Then If True Then Debug.Print "both": Debug.Print "same line" ' expect: both
    ' expect: same line
    Debug.Assert i = 2
End Sub
