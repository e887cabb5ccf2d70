' The right side first, then the indices from left to right.
Dim a(3, 3)
Function I(n, what) : WScript.Echo what : I = n : End Function
a(I(1, "first"), I(2, "second")) = I(5, "value")
' == value
' == first
' == second
WScript.Echo a(1, 2) ' -> 5
Dim x(2)
Function Last : x(0) = "changed" : Last = 9 : End Function
x(1) = Last
WScript.Echo x(0), x(1) ' -> changed 9
