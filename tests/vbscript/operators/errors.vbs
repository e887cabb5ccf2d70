On Error Resume Next
Sub Told : WScript.Echo Err.Number, Err.Description : Err.Clear : End Sub
x = 1 / 0 : Told ' -> 11 Division by zero
x = 1 \ 0 : Told ' -> 11 Division by zero
x = 1 Mod 0.2 : Told ' -> 11 Division by zero
x = 1e308 * 10 : Told ' -> 6 Overflow
x = "abc" * 2 : Told ' -> 13 Type mismatch
x = "abc" - "1" : Told ' -> 13 Type mismatch
x = 1 + Nothing : Told ' -> 91 Object variable not set
x = 3000000000 \ 1 : Told ' -> 6 Overflow
x = (-8) ^ 0.5 : Told ' -> 5 Invalid procedure call or argument
x = Array(1) + 1 : Told ' -> 13 Type mismatch
x = 1 Is Nothing : Told ' -> 424 Object required
x = CCur(900000000000000) * 10 : Told ' -> 6 Overflow
