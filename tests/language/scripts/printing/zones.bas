Sub main()
    Debug.Print "a"; Tab(5); "b"; Spc(3); "c" ' expect: a   b   c
    Debug.Print "abcdef"; Tab(3); "x"
    ' expect: abcdef
    ' expect:   x
    Debug.Print 1, 22, "a"; ' goes on
    Debug.Print , "z" ' expect:  1             22           a             z
    Debug.Print "two" & vbCrLf & "lines"
    ' expect: two
    ' expect: lines
    Debug.Print , 5 ' expect:                5
    Debug.Print #3/5/2018#; 5; CVErr(2042) ' expect: 3/5/2018 5 Error 2042
    Debug.Print "unfinished"; ' expect: unfinished
End Sub
