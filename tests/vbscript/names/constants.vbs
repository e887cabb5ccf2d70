Const A = 5, B = "x", C = -1.5, D = &HFF, E = #1/1/2000#, F = True, G = Empty, H = (3)
WScript.Echo A, B, C, D, E, F, IsEmpty(G), H ' -> 5 x -1.5 255 1/1/2000 True True 3
On Error Resume Next
A = 6 : WScript.Echo Err.Number, Err.Description, A ' -> 501 Illegal assignment: 'A' 5
Err.Clear
Sub S : A = 7 : End Sub
S : WScript.Echo Err.Number ' -> 501
Err.Clear
Len = 3 : WScript.Echo Err.Number ' -> 501
Err.Clear
vbCrLf = 1 : WScript.Echo Err.Number ' -> 501
