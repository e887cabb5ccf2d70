WScript.Echo 0.1 + 0.2, 1/3, 100000000000000, 1E15, 123456789012345678 ' -> 0.3 0.333333333333333 100000000000000 1E+15 1.23456789012346E+17
WScript.Echo 0.00001, 1E-11, 5.6789E-12, -0.5, 1E300 ' -> 0.00001 0.00000000001 5.6789E-12 -0.5 1E+300
WScript.Echo CSng(1/3), CSng(100000000), CSng(0.1) ' -> 0.3333333 1E+08 0.1
WScript.Echo CCur("1.23456"), CCur(-2.5), CCur(922337203685477) ' -> 1.2346 -2.5 922337203685477
WScript.Echo True & False, CStr(Empty) & "|", "" & 1.50 ' -> TrueFalse | 1.5
WScript.Echo Hex(255), Hex(-1), Hex(-32768), Hex(-32767), Hex(65536), Oct(8), Hex(15.5) ' -> FF FFFF FFFF8000 8001 10000 10 10
On Error Resume Next
x = CStr(Null) : WScript.Echo Err.Number ' -> 94
WScript.Echo "a" & Null & "b", IsNull(Null & Null) ' -> ab True
