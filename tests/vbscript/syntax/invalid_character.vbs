WScript.Echo "never"
x = 1 ? 2 ' !! 1032 Invalid character
