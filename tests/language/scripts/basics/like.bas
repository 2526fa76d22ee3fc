Sub main()
    Debug.Print "Sheet1" Like "Sheet#"; "SheetA" Like "Sheet#" ' expect: TrueFalse
    Debug.Print "abc" Like "a*c"; "ac" Like "a*c"; "abd" Like "a*c" ' expect: TrueTrueFalse
    Debug.Print "abc" Like "a?c"; "ac" Like "a?c" ' expect: TrueFalse
    Debug.Print "b5" Like "[a-c]#"; "d5" Like "[a-c]#"; "d5" Like "[!a-c]#" ' expect: TrueFalseTrue
    Debug.Print "a*b" Like "a[*]b"; "axb" Like "a[*]b" ' expect: TrueFalse
    Debug.Print "-" Like "[a-]"; "x-y" Like "*[-]*"; "!" Like "[!]" ' expect: TrueTrueTrue
    Debug.Print "" Like "*"; "" Like "?"; "" Like "" ' expect: TrueFalseTrue
    Debug.Print "ABC" Like "abc" ' expect: False
    Debug.Print "aXbXc" Like "a*b*c"; "mississippi" Like "*iss*ip*i" ' expect: TrueTrue
    Debug.Print "a[b" Like "a[[]b"; "a]" Like "a]" ' expect: TrueTrue
    On Error Resume Next
    Debug.Print "a" Like "[z-a]"
    Debug.Print Err.Number; Err.Description ' expect:  93 Invalid pattern string
    Err.Clear
    Debug.Print "a" Like "b[a"
    Debug.Print Err.Number ' expect:  93
End Sub
