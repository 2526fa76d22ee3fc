' Dates as people write them, in a source and in a text.
Sub show(ByVal text As String)
    If IsDate(text) Then Debug.Print Format(CDate(text), "yyyy-mm-dd hh:nn:ss") Else Debug.Print "no date: "; text
End Sub
Sub main()
    Debug.Print Format(#Jan 5, 2003#, "yyyy-mm-dd"); Format(#5-Feb-1999#, " yyyy-mm-dd"); Format(#December 31, 29 11:59 PM#, " yyyy-mm-dd hh:nn") ' expect: 2003-01-05 1999-02-05 2029-12-31 23:59
    Debug.Print #2:30 PM# = TimeSerial(14, 30, 0); #12 am# = 0; #2018-03-05# = DateSerial(2018, 3, 5); #3/2003# = DateSerial(2003, 3, 1) ' expect: TrueTrueTrueTrue
    show "January 2003" ' expect: 2003-01-01 00:00:00
    show "5 jan. 03, 2:07:09 pm" ' expect: 2003-01-05 14:07:09
    show "2:30 pm 5/6/07" ' expect: 2007-05-06 14:30:00
    show "13/2/1930" ' expect: 1930-02-13 00:00:00
    show "1/1/30" ' expect: 1930-01-01 00:00:00
    show "2018/3/5 7 am" ' expect: 2018-03-05 07:00:00
    show "Feb 30" ' expect: 1930-02-01 00:00:00
    show "Feb 30, 2003" ' expect: no date: Feb 30, 2003
    show "13/13/2003" ' expect: no date: 13/13/2003
    show "2:60 pm" ' expect: no date: 2:60 pm
    show "5 Foo 2003" ' expect: no date: 5 Foo 2003
    show "1/2/3/4" ' expect: no date: 1/2/3/4
    show "5" ' expect: no date: 5
    Debug.Print Year(CDate("mar 4")) = Year(Date) Or Year(CDate("mar 4")) > 2025 ' expect: True
    Debug.Print CDbl(CDate("12/31/9999 11:59:59 PM")) > 2958465 ' expect: True
    On Error Resume Next
    Debug.Print CDate(2958466)
    Debug.Print Err.Number ' expect:  6
    Err.Clear
    Debug.Print CDate("1/1/10000")
    Debug.Print Err.Number ' expect:  13
    Close #1, #2
End Sub
