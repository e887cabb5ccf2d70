WScript.Echo "never"
Dim a(x) ' !! 1026 Expected integer constant
