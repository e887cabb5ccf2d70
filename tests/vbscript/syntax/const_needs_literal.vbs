WScript.Echo "never"
Const a = b ' !! 1045 Expected literal constant
