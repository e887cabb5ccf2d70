WScript.Echo Left("hello", 2), Right("hello", 3), Mid("hello", 2, 3), Mid("hello", 4), Mid("abc", 9) & "|" ' -> he llo ell lo |
WScript.Echo Left("hello", 2.5), Len(Space(4.5)), Left("ab", 99) ' -> he 4 ab
WScript.Echo InStr("hello", "l"), InStr(4, "hello", "l"), InStr("hello", "z"), InStr("", "a"), InStr("abc", "") ' -> 3 4 0 0 1
WScript.Echo InStr(1, "HELLO", "l", vbTextCompare), InStrRev("hello", "l"), InStrRev("hello", "l", 3), InStrRev("abcabc", "C", -1, 1) ' -> 3 4 3 6
WScript.Echo UCase("äbc"), LCase("ÄBC"), "[" & Trim("  a b  ") & "]", "[" & LTrim("  a") & "]", "[" & RTrim("a  ") & "]" ' -> ÄBC äbc [a b] [a] [a]
WScript.Echo Replace("aaa", "a", "b"), Replace("aaa", "a", "b", 1, 2), Replace("abcabc", "b", "X", 3), Replace("aAa", "A", "x", 1, -1, 1) ' -> bbb bba caXc xxx
WScript.Echo String(3, "ab"), String(2, 65), StrReverse("abc"), Len(String(0, "x")) ' -> aaa AA cba 0
WScript.Echo StrComp("a", "b"), StrComp("b", "a"), StrComp("a", "A", 1), StrComp("a", "A") ' -> -1 1 0 1
WScript.Echo Asc("A"), Chr(97), AscW("€"), ChrW(8364), LenB("ab") ' -> 65 a 8364 € 4
WScript.Echo IsNull(Left(Null, 1)), IsNull(Len(Null)), IsNull(InStr(Null, "a")), IsNull(UCase(Null)) ' -> True True True True
On Error Resume Next
Sub Told : WScript.Echo Err.Number : Err.Clear : End Sub
x = Left("a", -1) : Told ' -> 5
x = Mid("a", 0) : Told ' -> 5
x = InStr(0, "a", "a") : Told ' -> 5
x = Asc("") : Told ' -> 5
x = Chr(300) : Told ' -> 5
x = Replace(Null, "a", "b") : Told ' -> 94
x = InStr(1, "a", "a", 7) : Told ' -> 5
