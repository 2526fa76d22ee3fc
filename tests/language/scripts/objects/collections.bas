Option Explicit
Sub main()
    Dim c As New Collection, d As Object, k
    c.Add "one", "k1": c.Add "three": c.Add "two", , 2: c.Add "last", After:=3
    Debug.Print c.Count; c(1); c("K1"); c.Item(2); c(4) ' expect:  4 oneonetwolast
    c.Remove "k1": Debug.Print c(1) ' expect: two
    Set d = CreateObject("Scripting.Dictionary")
    d.Add "a", 1
    d("b") = 2: d.Item("c") = 3: d!e = 5
    d("a") = d("a") + 10
    Debug.Print d.Count; d("a"); d.Exists("b"); d.Exists("B"); d!e ' expect:  4  11 TrueFalse 5
    For Each k In d.Keys: Debug.Print k;: Next
    Debug.Print Join(d.Keys, ","); d.Items()(1) ' expect: abcea,b,c,e 2
    d.Remove "b": Debug.Print d.Exists("b"); d("c") ' expect: False 3
    Set d("o") = c
    Debug.Print d("o").Count; TypeName(d("o")); TypeOf c Is Collection ' expect:  3 CollectionTrue
    With d
        .RemoveAll
        .CompareMode = vbTextCompare
        .Add "X", "found"
        Debug.Print .Count; .Item("x") ' expect:  1 found
    End With
    On Error Resume Next
    d.Add "x", 1: Debug.Print Err.Number ' expect:  457
    Err.Clear: Debug.Print c(9): Debug.Print Err.Number ' expect:  9
    Err.Clear: Debug.Print c("none"): Debug.Print Err.Number ' expect:  5
End Sub
