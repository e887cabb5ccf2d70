' By reference unless told otherwise; parentheses and expressions go by value.
Sub Change(x) : x = x + 1 : End Sub
Sub Keep(ByVal x) : x = x + 1 : End Sub
Dim a, arr(2) : a = 1
Change a : WScript.Echo a ' -> 2
Change (a) : WScript.Echo a ' -> 2
Call Change(a) : WScript.Echo a ' -> 3
Call Change((a)) : WScript.Echo a ' -> 3
Keep a : WScript.Echo a ' -> 3
Change a + 0 : WScript.Echo a ' -> 3
Change arr(1) : WScript.Echo arr(1) ' -> 1
Change (arr(1)) : WScript.Echo arr(1) ' -> 1
Call Change(arr(1)) : WScript.Echo arr(1) ' -> 2
' Brackets in front of an operator only begin the first argument.
Sub Show(x) : WScript.Echo x : End Sub
Show(1) + 2 ' -> 3
Show (2) * (3) ' -> 6
Show(a) & "!" ' -> 3!
Sub Two(x, y) : WScript.Echo x, y : End Sub
Two (1), 2 ' -> 1 2
Two(1) - 1, (2) ' -> 0 2
' A reference goes on through several calls.
Sub Outer(x) : Change x : Change x : End Sub
Outer a : WScript.Echo a ' -> 5
Sub Swap(x, y) : Dim t : t = x : x = y : y = t : End Sub
arr(0) = "l" : arr(2) = "r"
Swap arr(0), arr(2) : WScript.Echo arr(0), arr(2) ' -> r l
' A text that grows through a reference.
Sub Grow(s) : Dim i : For i = 1 To 3 : s = s & i & "," : Next : End Sub
Dim g : g = "x" : Grow g : WScript.Echo g ' -> x1,2,3,
