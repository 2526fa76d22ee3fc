Private Sub Fails(ByVal which As Integer)
    On Error Resume Next
    Dim result As Variant
    Select Case which
    Case 1: result = CLng("&HG")
    Case 2: result = CInt("&H12345")
    Case 3: result = CCur("922337203685477.5808")
    Case 4: result = CLngLng("9223372036854775808")
    Case 5: result = CLng("&H")
    Case 6: result = CLng("&H12345%")
    Case 7: result = CLng("&O8")
    End Select
    Debug.Print which & ":" & Err.Number & " ";
End Sub

Sub main()
    Dim i As Integer
    ' Every digit that the type has
    Debug.Print CCur("922337203685477.5807") & " " & CCur("-922337203685477.5808") & " " & CCur("123456789012345.6789") ' expect: 922337203685477.5807 -922337203685477.5808 123456789012345.6789
    Debug.Print CCur("0.00005") & " " & CCur("0.00015") & " " & CCur("0.000050001") & " " & CCur("-0.00015") & " " & CCur("1,234.5") & " " & CCur("1E3") ' expect: 0 0.0002 0.0001 -0.0002 1234.5 1000
    Debug.Print CLngLng("9223372036854775807") & " " & CLngLng("-9223372036854775808") & " " & CLngLng("9,007,199,254,740,993") & " " & CLngLng("2.5") ' expect: 9223372036854775807 -9223372036854775808 9007199254740993 2
    ' Without a mark as many bits as it takes
    Debug.Print CLng("&HFFFF") & " " & CLng("&HFFFF&") & " " & CLng("&H10000") & " " & CLng("&hFFFFFFFF") & " " & CDbl("&H7F") & " " & CLngLng("&HFFFFFFFF^") & " " & CLngLng("&H100000000") ' expect: -1 65535 65536 -1 127 4294967295 4294967296
    Debug.Print CInt("&O17") & " " & CInt("&17") & " " & CLng("&O177777") & " " & CByte("&HFF") & " " & CCur(" &H10 ") & " " & CStr("&H10") & " " & ("&H10" + 1) ' expect: 15 15 -1 255 16 &H10 17
    Debug.Print IsNumeric("&HFF"); IsNumeric("&o7"); IsNumeric("&HXY"); IsNumeric("&") ' expect: TrueTrueFalseFalse
    For i = 1 To 7
        Fails i
    Next
    Debug.Print ' expect: 1:13 2:6 3:6 4:6 5:13 6:13 7:13
End Sub
