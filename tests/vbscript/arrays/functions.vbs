WScript.Echo Join(Split("a,b,c", ","), "-") ' -> a-b-c
WScript.Echo Join(Split("a b  c")) ' -> a b  c
WScript.Echo UBound(Split("", ",")), UBound(Split("abc", "")) ' -> -1 0
WScript.Echo Join(Split("a,b,c,d", ",", 2), "|") ' -> a|b,c,d
WScript.Echo Join(Split("aXbxc", "x", -1, 1), "|") ' -> a|b|c
WScript.Echo Join(Filter(Array("apple", "Bob", "grape"), "ap"), ",") ' -> apple,grape
WScript.Echo Join(Filter(Array("apple", "Bob", "grape"), "b", False, vbTextCompare), ",") ' -> apple,grape
WScript.Echo LBound(Array(1)), UBound(Array(1, 2)) ' -> 0 1
Dim m(2, 5) : WScript.Echo UBound(m), UBound(m, 2) ' -> 2 5
On Error Resume Next
x = UBound(m, 3) : WScript.Echo Err.Number ' -> 9
Err.Clear
x = UBound(5) : WScript.Echo Err.Number ' -> 13
