Sub main()
    Debug.Print CInt(2.5); CInt(3.5); CInt(-2.5); CLng("1,234"); CDbl(" 3.25 "); CLng("&H10") ' expect:  2  4 -2  1234  3.25  16
    Debug.Print CStr(0.1); CStr(-5); CStr(True); CStr(1E+20); CStr(CSng(0.1)) ' expect: 0.1-5True1E+200.1
    Debug.Print CBool("True"); CBool(0); CBool("-1"); CByte("7"); CCur("1.5") ' expect: TrueFalseTrue 7  1.5
    Debug.Print Val("12abc"); Val(" 1 2 3"); Val("&HFF"); Val("x"); Val("-3.5e2z"); Val("18.0.1") ' expect:  12  123  255  0 -350  18
    Debug.Print Str(5); Str(-5); Hex(255); Hex(-1); Oct(8); Hex(-1&) ' expect:  5-5FFFFFF10FFFFFFFF
    Debug.Print Int(2.7); Int(-2.7); Fix(-2.7); Abs(-3); Sgn(-2); Round(2.5); Round(3.5); Round(2.345, 2); Round(-1.005, 2) ' expect:  2 -3 -2  3 -1  2  4  2.34 -1
    Debug.Print Sqr(16); Exp(0); Log(1); Sin(0); Cos(0); Atn(0) ' expect:  4  1  0  0  1  0
    Debug.Print IsNumeric("12.5"); IsNumeric("12x"); IsNumeric(""); IsNumeric(Empty); IsNumeric("&HF") ' expect: TrueFalseFalseTrueTrue
    Debug.Print IIf(1 > 2, "a", "b"); Choose(2, "x", "y"); Switch(False, 1, True, 2) ' expect: by 2
    Debug.Print TypeName(CVar(1)); TypeName(Nothing); TypeName(Null); TypeName(Empty); TypeName(CVErr(5)); IsError(CVErr(5)) ' expect: IntegerNothingNullEmptyErrorTrue
    Debug.Print CByte(True); CByte(False); CInt(True) ' expect:  255  0 -1
    Debug.Print RGB(1, 2, 3) ' expect:  197121
    a = Rnd(-1): b = Rnd(-1): Debug.Print a = b; a < 1 ' expect: TrueTrue
    On Error Resume Next
    Debug.Print CInt(40000): Debug.Print Err.Number ' expect:  6
    Err.Clear: Debug.Print Sqr(-1): Debug.Print Err.Number ' expect:  5
    Err.Clear: Debug.Print CDate("nonsense"): Debug.Print Err.Number ' expect:  13
    Err.Clear: Debug.Print -32768 \ -1: Debug.Print Err.Number ' expect:  32768
    ' expect:  0
    Err.Clear: Debug.Print 5 Mod 0: Debug.Print Err.Number ' expect:  11
    Err.Clear: Debug.Print 10 ^ 400: Debug.Print Err.Number ' expect:  6
End Sub
