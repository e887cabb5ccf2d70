On Error Resume Next
x = 1 / 0
WScript.Echo Err.Number, Err.Description, Err.Source ' -> 11 Division by zero Microsoft VBScript runtime error
WScript.Echo Err ' -> 11
Err.Clear
WScript.Echo Err.Number, "[" & Err.Description & "]" ' -> 0 []
Err.Raise 1000, "me", "my words"
WScript.Echo Err.Number, Err.Source, Err.Description ' -> 1000 me my words
' What a Raise leaves out stays.
Err.Raise 1001
WScript.Echo Err.Number, Err.Source, Err.Description ' -> 1001 me my words
Err.Clear
Err.Raise 6
WScript.Echo Err.Description ' -> Overflow
Err.Raise 0
WScript.Echo Err.Number ' -> 5
Err.Clear
Err.Raise 60000
WScript.Echo Err.Description ' -> Unknown runtime error
Err.Clear
Err.Raise vbObjectError + 5, , "text"
WScript.Echo Err.Number ' -> -2147221499
On Error GoTo 0
WScript.Echo Err.Number ' -> 0
Err.Raise 9 ' !! 9 Subscript out of range
