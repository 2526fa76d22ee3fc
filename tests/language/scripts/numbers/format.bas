Sub main()
    Debug.Print Format(1234.567, "0.00"); "|"; Format(1234.567, "#,##0.0"); "|"; Format(0.5, "0%"); "|"; Format(5, "000") ' expect: 1234.57|1,234.6|50%|005
    Debug.Print Format(0, "#.##"); "|"; Format(1.5, "#.##"); "|"; Format(-3, "0;(0);zero"); "|"; Format(0, "0;(0);zero") ' expect: .|1.5|(3)|zero
    Debug.Print Format(1234567, "#,##0,"); "|"; Format(12345.678, "0.00E+00"); "|"; Format(7, """No. ""0"); "|"; Format(5, "\#0") ' expect: 1,235|1.23E+04|No. 7|#5
    Debug.Print Format(2.675, "0.00"); Format(0.125, "0.00"); Format(-0.001, "0.00"); Format(1E+15, "0") ' expect: 2.680.130.001000000000000000
    Debug.Print Format(1234.5, "Standard"); "|"; Format(0.256, "Percent"); "|"; Format(3, "Fixed"); "|"; Format(1, "Yes/No"); "|"; Format(0, "On/Off") ' expect: 1,234.50|25.60%|3.00|Yes|Off
    Debug.Print Format("abc", ">"); Format("ABC", "<"); "["; Format("ab", "@@@@"); "]["; Format("ab", "!@@@@"); "]"; Format("12345", "@@-@@@") ' expect: ABCabc[  ab][ab  ]12-345
    Debug.Print Format(5); Format("x"); Format(True); Format(Null); "|"; Format(1.5, "") ' expect: 5xTrue|1.5
    Debug.Print FormatNumber(1234.567); FormatNumber(-0.5, 1, vbFalse, vbTrue); FormatPercent(0.5, 0) ' expect: 1,234.57(.5)50%
End Sub
