Sub Two(a, b) : End Sub
On Error Resume Next
Two 1 : WScript.Echo Err.Number, Err.Description ' -> 450 Wrong number of arguments or invalid property assignment: 'Two'
Err.Clear
x = Len() : WScript.Echo Err.Number ' -> 450
On Error GoTo 0
Two 1, 2, 3 ' !! 450 Wrong number of arguments or invalid property assignment: 'Two'
