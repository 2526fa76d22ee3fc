Option Explicit
Dim log1 As String
Type Pair
    Key As String
    Value As Variant
End Type
Function Note(n)
    log1 = log1 & n
    Note = n
End Function
Function GrowsItsArgument(a() As Long) As Long
    ReDim Preserve a(10)
    a(0) = 42
    GrowsItsArgument = 1
End Function
Sub ErasesWhatItGot(x As Long, a() As Long)
    ReDim a(1)
    x = 99 ' the element is gone from the array, and nothing breaks
End Sub
Function Swallow(ByRef p As Pair) As Pair
    p.Key = "changed"
    Swallow = p
    Swallow.Key = "copy"
End Function
Sub main()
    Dim a() As Long, p As Pair, q As Pair, v, i, list(2) As Pair
    ReDim a(2)
    ' An expression's parts are each evaluated once, from left to right.
    v = Array(Note(1), Note(2))(Note(0)) + Note(3)
    Debug.Print v; log1 ' expect:  4 1203
    a(GrowsItsArgument(a)) = 7
    Debug.Print UBound(a); a(0); a(1) ' expect:  10  42  7
    ErasesWhatItGot a(1), a
    Debug.Print UBound(a); a(1) ' expect:  1  0
    q = Swallow(p)
    Debug.Print p.Key; q.Key ' expect: changedcopy
    list(1) = q: list(2) = list(1): list(2).Key = "third"
    Debug.Print list(1).Key; list(2).Key ' expect: copythird
    ' An array that is walked may be replaced meanwhile.
    v = Array(1, 2, 3)
    For Each i In v
        v = Empty
        Debug.Print i;
    Next
    Debug.Print ' expect:  1  2  3
    ' A copy of an array is a copy, in variants and fields, too.
    v = Array(1, 2): p.Value = v: v(0) = 9
    Debug.Print p.Value(0); v(0) ' expect:  1  9
    i = v: i(1) = "x": Debug.Print v(1); i(1) ' expect:  2 x
    ' The function's own name reads its result so far.
    Debug.Print Collects(3) ' expect: 1;2;3;
    ' A counter may be changed inside, and keeps the value that ended the loop.
    For i = 1 To 10: i = i + 4: Next: Debug.Print i ' expect:  11
End Sub
Function Collects(n) As String
    Dim k
    For k = 1 To n: Collects = Collects & k & ";": Next
End Function
