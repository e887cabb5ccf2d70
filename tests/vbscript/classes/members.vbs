Class C
  Public F, Arr(3)
  Private Hidden
  Dim Plain
  Private Sub Secret : End Sub
  Public Sub Use : Secret : Hidden = 1 : Arr(1) = 7 : End Sub
  Public Function Add(ByRef x, ByVal y) : x = x + y : Add = x : End Function
End Class
Dim a, n : Set a = New C
a.F = 3 : a.Plain = 4
WScript.Echo a.F + a.Plain ' -> 7
a.Use : WScript.Echo a.Arr(1) ' -> 7
a.Arr(2) = 5 : WScript.Echo a.Arr(2) ' -> 5
n = 1 : a.Add n, 5 : WScript.Echo n ' -> 6
On Error Resume Next
Sub Told : WScript.Echo Err.Number, Err.Description : Err.Clear : End Sub
a.Nope : Told ' -> 438 Object doesn't support this property or method: 'Nope'
a.Secret : Told ' -> 438 Object doesn't support this property or method: 'Secret'
n = a.Hidden : Told ' -> 438 Object doesn't support this property or method: 'Hidden'
n = 5 : n.foo : Told ' -> 424 Object required: 'n'
Set n = Nothing : n.foo : Told ' -> 424 Object required: 'n'
Set n = 5 : Told ' -> 424 Object required
Set n = New Undeclared : Told ' -> 500 Variable is undefined: 'Undeclared'
Dim notclass
Set n = New notclass : Told ' -> 506 Class not defined: 'notclass'
n = a + 1 : Told ' -> 438 Object doesn't support this property or method
Dim e : e = 5
n = e() : Told ' -> 13 Type mismatch: 'e'
