WScript.Echo "never"
x = (1 + 2 ' !! 1006 Expected ')'
