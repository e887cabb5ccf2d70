WScript.Echo "never"
On Error GoTo label ' !! 1002 Syntax error
