Option Explicit
Enum Colour
    Red
    Green = 5
    Blue
    [Dark Blue] = Blue * 2
End Enum
Private Enum Flags
    One = &H1
    Both = One Or 2
End Enum
Const Pi As Double = 3.14159
Sub main()
    Dim c As Colour, d As znDocumentTypes_e
    c = Blue
    d = znDocDRAWING
    Debug.Print Red; Green; c; Colour.Green; [Dark Blue]; Both ' expect:  0  5  6  5  12  3
    Debug.Print d; znDocumentTypes_e.znDocPART; Zentrel.znDocPART; TypeName(d) ' expect:  3  1  1 Long
    Debug.Print Pi; vbTextCompare; Len(vbCrLf); VBA.Left("abc", 2) ' expect:  3.14159  1  2 ab
End Sub
