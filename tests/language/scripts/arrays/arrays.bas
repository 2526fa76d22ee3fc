Option Explicit
Option Base 1
Sub Fill(a() As Integer)
    Dim i As Integer
    For i = LBound(a) To UBound(a): a(i) = i * i: Next
    ReDim Preserve a(1 To 5)
End Sub
Sub main()
    Dim a(3) As Integer, m(1 To 2, -1 To 1) As String, d() As Integer, v, w, i As Integer
    Debug.Print LBound(a); UBound(a); LBound(m, 2); UBound(m, 2) ' expect:  1  3 -1  1
    m(2, -1) = "x": m(1, 1) = "y"
    Debug.Print m(2, -1); m(1, 1); m(1, 0) = "" ' expect: xyTrue
    ReDim d(1 To 3)
    Fill d
    Debug.Print UBound(d); d(3); d(4) ' expect:  5  9  0
    v = d: v(1) = 100
    Debug.Print d(1); v(1); TypeName(v); IsArray(d) ' expect:  1  100 Integer()True
    w = Array("a", Array(1, 2), 3)
    Debug.Print LBound(w); w(2)(1); UBound(w(2)) ' expect:  1  1  2
    w(2)(1) = 50: Debug.Print w(2)(1) ' expect:  50
    ReDim v(2 To 4): v(3) = "three"
    ReDim Preserve v(2 To 3): Debug.Print UBound(v); v(3) ' expect:  3 three
    Erase a: Debug.Print a(2) ' expect:  0
    Dim alignment(0 To 11) As Double
    alignment(3) = 1: Debug.Print alignment(3); UBound(alignment) ' expect:  1  11
    Debug.Print Join(Array("x", "y", 3), "-"); Join(Split("a,b,,c", ","), "|") ' expect: x-y-3a|b||c
    Debug.Print UBound(Split("")); LBound(Split("a")); Split("a/b/c", "/", 2)(1) ' expect: -1  0 b/c
    Debug.Print Join(Filter(Array("apple", "pear", "grape"), "ap"), ","); UBound(Filter(Array("a"), "z")) ' expect: apple,grape-1
    Dim names() As String
    names = Split("one two")
    For i = 0 To UBound(names): Debug.Print names(i); ".";: Next
    Debug.Print ' expect: one.two.
    On Error Resume Next
    Erase d: Debug.Print UBound(d): Debug.Print Err.Number ' expect:  9
    Err.Clear: Debug.Print a(4): Debug.Print Err.Number ' expect:  9
    Err.Clear: Debug.Print m(1): Debug.Print Err.Number ' expect:  9
    Err.Clear: ReDim d(5 To 1): Debug.Print Err.Number ' expect:  9
    Err.Clear: names = a: Debug.Print Err.Number ' expect:  13
End Sub
