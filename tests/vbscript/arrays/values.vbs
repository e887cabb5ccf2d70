' Arrays are values: assignment copies, ByVal copies.
Dim a, b
a = Array(1, 2, 3)
b = a
b(0) = 99
WScript.Echo a(0), b(0) ' -> 1 99
Sub ByV(ByVal x) : x(0) = 5 : End Sub
Sub ByR(x) : x(0) = 5 : End Sub
ByV a : WScript.Echo a(0) ' -> 1
ByR a : WScript.Echo a(0) ' -> 5
Dim j : j = Array(Array(1, 2), Array(3, 4))
j(0)(1) = 20
WScript.Echo j(0)(1), j(1)(0) ' -> 20 3
Dim k : k = j(0) : k(0) = 7 : WScript.Echo j(0)(0) ' -> 1
Dim f(2), g
f(0) = "x" : g = f : g(0) = "y"
WScript.Echo f(0), g(0) ' -> x y
Dim d() 
ReDim d(2) : d(0) = 1 : d(2) = 3
ReDim Preserve d(4) : WScript.Echo d(0), d(2), UBound(d), IsEmpty(d(4)) ' -> 1 3 4 True
ReDim Preserve d(0) : WScript.Echo UBound(d), d(0) ' -> 0 1
ReDim d(1) : WScript.Echo IsEmpty(d(0)) ' -> True
Dim m() : ReDim m(1, 2) : m(1, 2) = "c"
ReDim Preserve m(1, 5) : WScript.Echo m(1, 2), UBound(m, 2), UBound(m, 1) ' -> c 5 1
Erase d
On Error Resume Next
WScript.Echo UBound(d)
WScript.Echo Err.Number ' -> 9
Err.Clear
Erase f : WScript.Echo IsEmpty(f(0)), UBound(f) ' -> True 2
Sub Told : WScript.Echo Err.Number : Err.Clear : End Sub
ReDim f(5) : Told ' -> 10
ReDim Preserve m(3, 5) : Told ' -> 9
x = a(3) : Told ' -> 9
x = a(-1) : Told ' -> 9
x = a(0, 0) : Told ' -> 9
x = a("q") : Told ' -> 13
x = a() : Told ' -> 9
x = a("1") : WScript.Echo x ' -> 2
x = a(1.5) : WScript.Echo x ' -> 3
ReDim neg(-1) : Told ' -> 0
ReDim neg(-2) : Told ' -> 9
Erase x : Told ' -> 13
WScript.Echo TypeName(a), VarType(a), IsArray(a), TypeName(Array()), UBound(Array()) ' -> Variant() 8204 True Variant() -1
