Sub main()
Debug.Print Format(1234.5, "#,##0.00"); Format(43164.5, "yyyy-mm-dd hh:nn"); Mid("abc", 2, 1); InStr("abc", "c"); Replace("aXa", "a", "b"); Split("a,b", ",")(1); StrConv("ab", 1); Like1("a1")
Debug.Print DateAdd("m", 1, #1/31/2018#), DateDiff("d", 1, 2), Round(2.5), Hex(-1), Val("&H10"), CCur(1.23456), String(3, "x"), UBound(Array(1, 2)), Join(Array("a", 1), "-"), Choose(2, 1, 3), Switch(False, 1, True, 2)
End Sub
Function Like1(s) As Boolean
Like1 = s Like "[a-z]#*"
End Function
