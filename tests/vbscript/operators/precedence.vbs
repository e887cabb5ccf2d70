WScript.Echo 2^3^2 ' -> 64
WScript.Echo -3^2 ' -> 9
WScript.Echo 2^-1 ' -> 0.5
WScript.Echo 7 \ 2 * 3 ' -> 1
WScript.Echo 10 Mod 4 \ 2 ' -> 0
WScript.Echo 1 + 2 & 3 + 4 ' -> 37
WScript.Echo 2 + 3 * 4 - 5 ' -> 9
WScript.Echo Not 1 = 2 ' -> True
WScript.Echo True Or False And False ' -> True
WScript.Echo (True Or False) And False ' -> False
WScript.Echo 1 < 2 = True ' -> True
WScript.Echo 5 Xor 3, 5 Eqv 3, 5 Imp 3 ' -> 6 -7 -5
WScript.Echo -5 Mod 3, 5 Mod -3 ' -> -2 2
WScript.Echo 8 / 2 / 2 ' -> 2
