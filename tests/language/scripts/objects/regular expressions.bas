' The dialect's RegExp, whose classes know ASCII only and whose $ stands at the very end.
Sub test(ByVal pattern As String, ByVal text As String, Optional ByVal multi As Boolean)
    Dim r As Object
    Set r = CreateObject("VBScript.RegExp")
    r.Pattern = pattern
    r.MultiLine = multi
    Debug.Print IIf(r.Test(text), "y", "n");
End Sub
Sub main()
    Dim r As New RegExp, m As Object, found As Object, early As VBScript_RegExp_55.RegExp
    r.Pattern = "(\w+)-(\d+)(x)?"
    r.Global = True
    Set found = r.Execute("pump-12, Valve-7x")
    Debug.Print found.Count; found(1).Value; found(1).FirstIndex; found(1).Length; found(0).SubMatches(1); found(0).SubMatches.Count; IsEmpty(found(0).SubMatches(2)); found(1).SubMatches(2) ' expect:  2 Valve-7x 9  8 12 3 Truex
    For Each m In found
        Debug.Print m; "|"; ' expect: pump-12|Valve-7x|
    Next
    Debug.Print
    Debug.Print r.Replace("pump-12, Valve-7x", "$2:$1"); r.Replace("a-1", "[$&|$$|$9]"); r.Replace("b a-1 c", "($`)($')") ' expect: 12:pump, 7:Valve[a-1|$|$9]b (b )( c) c
    r.Global = False: r.IgnoreCase = True: r.Pattern = "v"
    Debug.Print r.Replace("Valve", "W"); r.Test("PV"); TypeName(r); TypeName(found); r.Execute("x").Count ' expect: WalveTrueIRegExp2IMatchCollection2 0
    test "^\d$", ChrW$(1637): test "\w", ChrW$(228): test "a\b", "a" & ChrW$(228): test "\s", ChrW$(160) ' expect: nnyn
    Debug.Print
    test "a$", "a" & vbLf: test "a$", "a" & vbLf & "b", True: test "^b", "a" & vbLf & "b": test "^b", "a" & vbLf & "b", True: test "a.b", "a" & vbCr & "b": test "a.b", "a" & vbLf & "b" ' expect: nynyyn
    Debug.Print
    test "[[]", "[": test "[a&&b]", "&": test "[\w-]", "-": test "[^\d]", "1": test "\e", "e": test "(a)\1", "aa": test "x(?=y)", "xy": test "a{2,3}?", "aaa" ' expect: yyynyyyy
    Debug.Print
    On Error Resume Next
    r.Pattern = "(": Debug.Print r.Test("x")
    Debug.Print Err.Number; Err.Description ' expect:  5017 Syntax error in regular expression
    Err.Clear
    r.Pattern = "(a+)+$": Debug.Print r.Test(String(40, "a") & "b")
    Debug.Print Err.Number; Err.Description ' expect:  5 The regular expression takes too long on this text
    Err.Clear
    Set early = New RegExp
    early.Pattern = "1"
    Debug.Print early.Test("213"); early.Nonsense
    Debug.Print Err.Number ' expect:  438
End Sub
