Sub main()
    Debug.Print 2 + 3 * 4 ^ 2      ' expect:  50
    Debug.Print -2 ^ 2             ' expect: -4
    Debug.Print 2 ^ -1             ' expect:  0.5
    Debug.Print 2 ^ 3 ^ 2          ' expect:  64
    Debug.Print 7 \ 2; -7 \ 2; 7 Mod 3; -7 Mod 3 ' expect:  3 -3  1 -1
    Debug.Print 5.5 \ 2; 6.5 \ 2   ' expect:  3  3
    Debug.Print 10 / 4; 1 / 3      ' expect:  2.5  0.333333333333333
    Debug.Print 1 & 2 + 3          ' expect: 15
    Debug.Print "3" + 4; "3" + "4" ' expect:  7 34
    Debug.Print Not True; Not 5    ' expect: False-6
    Debug.Print 12 And 10; 12 Or 3; 12 Xor 10; 5 Eqv 3; 5 Imp 3 ' expect:  8  15  6 -7 -5
    Debug.Print 1 < 2 And 2 < 3    ' expect: True
    Debug.Print Not 1 = 2          ' expect: True
    Debug.Print "abc" < "abd"; "B" < "a" ' expect: TrueTrue
    Debug.Print "10" = 10; 1 = True; -1 = True ' expect: TrueFalseTrue
    Debug.Print Null + 1; Null & "x"; IsNull(Null = Null) ' expect: NullxTrue
    Debug.Print &HFF; &HFFFF; &HFFFF&; &O17 ' expect:  255 -1  65535  15
    Debug.Print 1E3; 1.5E-10; 123456789012345#; 1E+20 ' expect:  1000  1.5E-10  123456789012345  1E+20
    Debug.Print 3! ; 0.1!; CSng(1) / 3 ' expect:  3  0.1  0.3333333
    Debug.Print TypeName(1 + 1); TypeName(1 + 1&); TypeName(1 / 1); TypeName(1 & 1); TypeName(2 * 1.5!) ' expect: IntegerLongDoubleStringSingle
    Debug.Print #1/2/2018# + 1; TypeName(#1/3/2018# - #1/1/2018#) ' expect: 1/3/2018Double
    Debug.Print 5@ * 1.5@; TypeName(5@ + 1) ' expect:  7.5 Currency
    Debug.Print (1 = 1) + 1; TypeName(True + True) ' expect:  0 Integer
End Sub
