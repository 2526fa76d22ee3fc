Sub main()
    Dim d As Date
    d = #3/5/2018 2:07:09 PM#
    Debug.Print Now; Date; Time ' expect: 3/5/2018 2:07:09 PM3/5/20182:07:09 PM
    Debug.Print Year(d); Month(d); Day(d); Hour(d); Minute(d); Second(d); Weekday(d); Weekday(d, vbMonday) ' expect:  2018  3  5  14  7  9  2  1
    Debug.Print DateSerial(2018, 13, 1); DateSerial(2018, 3, 0); TimeSerial(1, 90, 0) ' expect: 1/1/20192/28/20182:30:00 AM
    Debug.Print DateAdd("m", 1, #1/31/2018#); DateAdd("yyyy", -1, #2/29/2016#); DateAdd("h", 12, d); DateAdd("ww", 1, #1/1/2018#) ' expect: 2/28/20182/28/20153/6/2018 2:07:09 AM1/8/2018
    Debug.Print DateDiff("d", #1/1/2018#, d); DateDiff("m", #12/31/2017#, #1/1/2018#); DateDiff("yyyy", #12/31/2017#, #1/1/2018#); DateDiff("n", #1:00:00 AM#, #2:30:00 AM#); DateDiff("ww", #1/6/2018#, #1/7/2018#) ' expect:  63  1  1  90  1
    Debug.Print DatePart("q", d); DatePart("y", d); DatePart("ww", d); DatePart("ww", #1/1/2017#, vbMonday, vbFirstFourDays) ' expect:  1  64  10  52
    Debug.Print Format(d, "yyyy-mm-dd hh:nn:ss"); "|"; Format(d, "d.m.yy h:mm AM/PM"); "|"; Format(d, "dddd, mmm d") ' expect: 2018-03-05 14:07:09|5.3.18 2:07 PM|Monday, Mar 5
    Debug.Print Format(d, "Short Date"); "|"; Format(d, "Long Time"); "|"; Format("3/5/2018", "yyyymmdd"); "|"; Format(d, "ddd dd mmmm q y w ww") ' expect: 3/5/2018|2:07:09 PM|20180305|Mon 05 March 1 64 2 10
    Debug.Print IsDate("3/5/2018"); IsDate("x"); CDate("2018-03-05") = DateValue(d); TimeValue("14:30") = 14.5 / 24 ' expect: TrueFalseTrueTrue
    Debug.Print MonthName(3); MonthName(3, True); WeekdayName(1); WeekdayName(1, True, vbMonday) ' expect: MarchMarSundayMon
    Debug.Print CDbl(#1/1/1900#); #1/1/1900# - 2 < 1; Timer ' expect:  2 True 50829
End Sub
