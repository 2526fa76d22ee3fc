' On … GoTo and On … GoSub: by number, behind the list for 0 and what is beyond, an error below 0 and above 255.
Sub main()
    Dim i As Variant
    For i = 0 To 4
        On i GoTo one, 20, three
        Debug.Print "none ";
        GoTo after
one:    Debug.Print "one ";
        GoTo after
20      Debug.Print "two ";
        GoTo after
three:  Debug.Print "three ";
after:
    Next
    Debug.Print ' expect: none one two three none
    For i = 1 To 3
        On i * 1.4 GoSub first, second: Debug.Print "back ";
    Next
    Debug.Print ' expect: first back back back
    On Error Resume Next
    On 256 GoTo one
    Debug.Print Err.Number; ' expect:  5  5  13
    Err.Clear
    On -1 GoSub first
    Debug.Print Err.Number;
    Err.Clear
    On "x" GoTo one
    Debug.Print Err.Number
    Debug.Print InputBox("Number?", "Pump", "P-100"); InputBox("Empty?"); "|" ' expect: P-100|
    Exit Sub
first:
    Debug.Print "first ";
    Return
second:
    Debug.Print "second ";
    Return
End Sub
