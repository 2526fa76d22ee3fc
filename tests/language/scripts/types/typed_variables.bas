Option Explicit
Sub main()
    Dim b As Byte, i As Integer, l As Long, s As Single, d As Double, c As Currency, t As String, f As Boolean, v, dt As Date, p As LongPtr
    Dim x%, y&, z$
    i = 2.5: l = 3.5: x = "12": y = 70000: z = 5
    Debug.Print i; l; x; y; z ' expect:  2  4  12  70000 5
    b = 255: f = 3: t = True: c = 1.23456: s = 0.1: d = s
    Debug.Print b; f; t; c ' expect:  255 TrueTrue 1.2346
    dt = "3/5/2018": Debug.Print dt; Year(dt) ' expect: 3/5/2018 2018
    v = i: Debug.Print TypeName(v); TypeName(x); TypeName(p); VarType(z); TypeName(v & "") ' expect: IntegerIntegerLongLong 8 String
    v = 32767: v = v + 1: Debug.Print v; TypeName(v) ' expect:  32768 Long
    v = 2147483647: v = v + 1: Debug.Print v; TypeName(v) ' expect:  2147483648 Double
    On Error Resume Next
    i = 32767: i = i + 1: Debug.Print Err.Number ' expect:  6
    Err.Clear: l = 256 * 256: Debug.Print Err.Number; l ' expect:  6  4
    Err.Clear: l = 256& * 256: Debug.Print Err.Number; l ' expect:  0  65536
    Err.Clear: b = 256: Debug.Print Err.Number ' expect:  6
    Err.Clear: i = "abc": Debug.Print Err.Number ' expect:  13
    Err.Clear: t = Null: Debug.Print Err.Number ' expect:  94
    Err.Clear: l = Array(1): Debug.Print Err.Number ' expect:  13
    Dim o As Object
    Err.Clear: Debug.Print o.Name: Debug.Print Err.Number ' expect:  91
    Err.Clear: Set o = 5: Debug.Print Err.Number ' expect:  424
    Debug.Print o Is Nothing; IsObject(o) ' expect: TrueTrue
End Sub
