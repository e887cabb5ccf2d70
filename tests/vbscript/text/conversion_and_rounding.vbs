WScript.Echo CInt(0.5), CInt(1.5), CInt(2.5), CInt(-2.5), CLng(3.5) ' -> 0 2 2 -2 4
WScript.Echo Int(-1.5), Fix(-1.5), Int("3.7"), TypeName(Int("3.7")), TypeName(Int(True)) ' -> -2 -1 3 Double Integer
WScript.Echo Round(2.5), Round(3.5), Round(2.665, 2), Round(-2.5), Round(1.005, 2), TypeName(Round(5)), TypeName(Round(5.0)) ' -> 2 4 2.66 -2 1 Integer Double
WScript.Echo TypeName(CByte(5)), TypeName(CCur(5)), TypeName(CSng(5)), TypeName(CDate(5)), TypeName(CBool(5)) ' -> Byte Currency Single Date Boolean
WScript.Echo Abs(-5), Abs(CInt("-32768")), Sgn(-3), Sqr(16), Exp(0), Log(1), Abs(-2.5) ' -> 5 32768 -1 4 1 0 2.5
WScript.Echo Round(Atn(1) * 4, 10), Round(Sin(1), 5), Round(Cos(1), 5), Round(Tan(1), 5) ' -> 3.1415926536 0.84147 0.5403 1.55741
On Error Resume Next
Sub Told : WScript.Echo Err.Number : Err.Clear : End Sub
x = CInt(32767.5) : Told ' -> 6
x = CInt(-32768.5) : WScript.Echo x ' -> -32768
x = CByte(256) : Told ' -> 6
x = CLng("99999999999") : Told ' -> 6
x = CInt("abc") : Told ' -> 13
x = Sqr(-1) : Told ' -> 5
x = Log(0) : Told ' -> 5
x = Exp(1000) : Told ' -> 6
x = CInt(Null) : Told ' -> 94
x = Round(1.5, -1) : Told ' -> 5
