' Patterns of Format by value, a row each.
Private Sub Row(ByVal value As Variant, ParamArray patterns() As Variant)
    Dim i As Integer, shown As String
    For i = 0 To UBound(patterns)
        shown = shown & "[" & Format(value, patterns(i)) & "]"
    Next
    Debug.Print shown
End Sub

Sub main()
    ' Literals between digits
    Row 5551234, "000-0000", "(000) 000-0000", "##-##", "0 0 0", "0\x0" ' expect: [555-1234][(000) 555-1234][55512-34][55512 3 4][555123x4]
    Row 42, "000-00-0000", "#-#-#", "0""-""0", "0-0.0-0" ' expect: [000-00-0042][-4-2][4-2][4-2.0-0]
    Row 1234567.891, "#,##0.00", "#,#", "0000-0,000", "0.0 m", "$#,##0.##;x", ".0" ' expect: [1,234,567.89][1,234,568][01,23-4,568][1234567.9 m][$1,234,567.89][1234567.9]
    Row 0, "#", "0", "#.#", "#,##0;;z", "0;0;\n\u\l\l" ' expect: [][0][.][z][null]
    Row -12.5, "0.0", "0.0;(0.0)", "0.0;;z", "0%", "0.0;""minus ""0" ' expect: [-12.5][(12.5)][-12.5][-1250%][minus 13]
    ' Commas at the end scale
    Row 123456789, "0,", "0,,", "#,##0,", "0.00,,", "#,,.0" ' expect: [123457][123][123,457][123.46][123.5]
    ' Scientific: rounding may lengthen the number
    Row 9.996, "0.00E+00", "0.000E+00", "0E-0", "00.0e+000", "0.##E+0" ' expect: [1.00E+01][9.996E+00][1E1][10.0e+000][1.E+1]
    Row 0.00015, "0E+00", "0.0E-00", "0.0##E+0" ' expect: [2E-04][1.5E-04][1.5E-4]
    Row 1E-320, "0.0E+0" ' expect: [1.0E-320]
    Row 0, "0.00E+00" ' expect: [0.00E+00]
    ' Sections for Null and for no text
    Row Null, "0", "0;-0;z;none", "@", "@;none", "Fixed" ' expect: [][none][][none][]
    Row "", "@@", "@;none", ">;none", "&&" ' expect: [  ][none][none][]
    ' Texts, and numbers as texts
    Row "abC", "@@@@@", "&&&&&", "!@@@@@", "!&&&&&", ">@@@@", "<&-&-&", "@""@""@\@" ' expect: [  abC][abC][abC  ][abC][ ABC][a-b-c][a@bC@]
    Row 123, "@@@@@", "!@@@@@x", "@-@" ' expect: [  123][123  x][1-23]
    Row "abc", "0.00", "Fixed", "x" ' expect: [abc][abc][x]
    Debug.Print FormatCurrency(1234.5); " "; FormatCurrency(-2.345, 2); " "; FormatCurrency(-0.5, 1, vbFalse, vbFalse); " "; FormatCurrency(1234.5, 0, GroupDigits:=vbFalse) ' expect: $1,234.50 ($2.35) -$.5 $1235
    Debug.Print FormatPercent(-0.256); " "; FormatPercent(-0.256, 1, vbTrue, vbTrue) ' expect: -25.60% (25.6%)
End Sub
