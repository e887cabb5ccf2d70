WScript.Echo FormatDateTime(#5/6/2007 13:04:05#) ' -> 5/6/2007 1:04:05 PM
WScript.Echo FormatDateTime(#5/6/2007#, vbLongDate) ' -> Sunday, May 6, 2007
WScript.Echo FormatDateTime(#5/6/2007 1:00#, 2), FormatDateTime(#13:04:05#, 3), FormatDateTime(#13:04:05#, 4) ' -> 5/6/2007 1:04:05 PM 13:04
WScript.Echo FormatNumber(1234567.89) ' -> 1,234,567.89
WScript.Echo FormatNumber(.2, , 0), FormatNumber(-50, , , -1), FormatNumber(1234.5, 0), FormatNumber(-0.001) ' -> .20 (50.00) 1,235 0.00
WScript.Echo FormatNumber(1234.567, 1, , , 0), FormatNumber("12"), FormatNumber(0), FormatNumber(999999.999, 2) ' -> 1234.6 12.00 0.00 1,000,000.00
WScript.Echo FormatCurrency(1234.5), FormatCurrency(-3), FormatPercent(0.12345), FormatPercent(1, 0) ' -> $1,234.50 ($3.00) 12.35% 100%
On Error Resume Next
x = FormatNumber(Null) : WScript.Echo Err.Number ' -> 13
Err.Clear
x = FormatNumber(1, Null) : WScript.Echo Err.Number ' -> 94
