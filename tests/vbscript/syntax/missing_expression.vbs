WScript.Echo "never"
x = 1 + ' !! 1023 Expected expression
