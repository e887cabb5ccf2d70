WScript.Echo DateSerial(2024, 2, 30) ' -> 3/1/2024
WScript.Echo DateSerial(99, 1, 1), DateSerial(49, 1, 1) ' -> 1/1/1999 1/1/2049
WScript.Echo DateSerial(2024, 13, 1), DateSerial(2024, 1, 0) ' -> 1/1/2025 12/31/2023
WScript.Echo TimeSerial(12, 30, 15), TimeSerial(25, 0, 0) ' -> 12:30:15 PM 12/31/1899 1:00:00 AM
WScript.Echo DateAdd("m", 1, #1/31/2023#), DateAdd("m", 1, #1/31/2024#) ' -> 2/28/2023 2/29/2024
WScript.Echo DateAdd("yyyy", 1, #2/29/2024#), DateAdd("q", -1, #5/31/2023#) ' -> 2/28/2025 2/28/2023
WScript.Echo DateAdd("h", 25, #1/1/2000#), DateAdd("ww", 2, #1/1/2000#) ' -> 1/2/2000 1:00:00 AM 1/15/2000
WScript.Echo DateAdd("n", -1, #1/1/2000#), DateAdd("s", 86400, #1/1/2000#) ' -> 12/31/1999 11:59:00 PM 1/2/2000
WScript.Echo DateDiff("yyyy", #12/31/1999#, #1/1/2000#), DateDiff("m", #1/31/2000#, #2/1/2000#) ' -> 1 1
WScript.Echo DateDiff("d", #1/1/2000 23:00#, #1/2/2000 01:00#), DateDiff("h", #1/1/2000 23:59#, #1/2/2000 00:01#) ' -> 1 1
WScript.Echo DateDiff("w", #1/1/2000#, #1/14/2000#), DateDiff("ww", #1/1/2000#, #1/2/2000#) ' -> 1 1
WScript.Echo DateDiff("s", #1/1/2000#, #1/2/2000#), DateDiff("q", #3/31/2000#, #4/1/2000#) ' -> 86400 1
WScript.Echo DatePart("y", #12/31/2024#), DatePart("q", #8/1/2000#), DatePart("ww", #1/1/2000#) ' -> 366 3 1
WScript.Echo DatePart("ww", #1/1/2005#, vbMonday, vbFirstFourDays), DatePart("ww", #12/31/2024#, 2, 2) ' -> 53 1
WScript.Echo Weekday(#1/1/2000#), Weekday(#1/1/2000#, vbMonday), WeekdayName(7), WeekdayName(1, True, 2) ' -> 7 6 Saturday Mon
WScript.Echo MonthName(2), MonthName(9, True) ' -> February Sep
WScript.Echo Year(#5/6/2007#), Month(#5/6/2007#), Day(#5/6/2007#), Hour(#13:14:15#), Minute(#13:14:15#), Second(#13:14:15#) ' -> 2007 5 6 13 14 15
WScript.Echo Now, Date, Time, Timer ' -> 1/1/2024 6:00:00 PM 1/1/2024 6:00:00 PM 64800
' Before day zero the fraction still counts forward.
WScript.Echo CDate(-1.25), CDate(-0.25), CDbl(CDate("12/29/1899 6:00")) ' -> 12/29/1899 6:00:00 AM 6:00:00 AM -1.25
WScript.Echo CDate(-1) + 0.75 ' -> 6:00:00 AM
WScript.Echo CDate("31/12/2020"), CDate("5 May 2001"), CDate("2001-05-06"), DateValue("1/2/2003 4:05") ' -> 12/31/2020 5/5/2001 5/6/2001 1/2/2003
WScript.Echo IsDate("2/30/2000"), IsDate("1/1/2000"), IsDate("abc"), IsDate(#1/1/2000#), IsDate(5) ' -> False True False True False
WScript.Echo IsNull(Year(Null)) ' -> True
On Error Resume Next
x = DateAdd("zz", 1, Now) : WScript.Echo Err.Number ' -> 5
Err.Clear
x = CDate("nonsense") : WScript.Echo Err.Number ' -> 13
Err.Clear
x = DateAdd("yyyy", 9000, Now) : WScript.Echo Err.Number ' -> 5
