WScript.Echo "never"
For i = 1 To 2 : Next i ' !! 1025 Expected end of statement
