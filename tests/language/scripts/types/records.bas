Option Explicit
Type Inner
    Label As String * 5
    Values(1 To 2) As Integer
End Type
Type Outer
    Name As String
    Part As Inner
    List() As Inner
    Anything As Variant
End Type
Dim shared As Outer
Function Make(n As String) As Outer
    Make.Name = n
    Make.Part.Values(2) = 9
End Function
Sub main()
    Dim a As Outer, b As Outer, all(1) As Outer
    a.Name = "first"
    a.Part.Label = "longer than five"
    a.Part.Values(1) = 4
    ReDim a.List(2)
    a.List(1).Label = "x"
    b = a
    b.Name = "copy": b.Part.Values(1) = 5: b.List(1).Label = "y"
    Debug.Print a.Name; a.Part.Label; a.Part.Values(1); "["; a.List(1).Label; "]" ' expect: firstlonge 4 [x    ]
    Debug.Print b.Name; b.Part.Values(1); "["; b.List(1).Label; "]" ' expect: copy 5 [y    ]
    With a.Part
        .Values(2) = 8
        .Label = "w"
    End With
    Debug.Print a.Part.Values(2); a.Part.Label; "|" ' expect:  8 w    |
    all(1) = a
    all(1).Name = "in array"
    Debug.Print a.Name; all(1).Name; all(0).Name; Len(all(0).Part.Label) ' expect: firstin array 5
    shared = Make("made")
    Debug.Print shared.Name; shared.Part.Values(2); Make("direct").Name ' expect: made 9 direct
    a.Anything = Array(1, 2)
    b = a
    b.Anything(0) = 7
    Debug.Print a.Anything(0); b.Anything(0) ' expect:  1  7
    ReDim Preserve a.List(5)
    Debug.Print UBound(a.List); a.List(1).Label ' expect:  5 x
End Sub
