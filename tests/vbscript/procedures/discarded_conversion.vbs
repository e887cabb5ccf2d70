On Error Resume Next
Call CInt("5") : WScript.Echo Err.Number ' -> 458
Err.Clear
CStr 5 : WScript.Echo Err.Number ' -> 458
Err.Clear
Call Len("abc") : WScript.Echo Err.Number ' -> 0
