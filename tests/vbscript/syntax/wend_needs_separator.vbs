WScript.Echo "never"
While True : x = 1 Wend ' !! 1025 Expected end of statement
