WScript.Echo "never"
x = "abc ' !! 1033 Unterminated string constant
