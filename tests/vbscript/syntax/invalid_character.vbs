WScript.Echo "never"
x = 1 ? 2 ' !! 1025 Expected end of statement
