WScript.Echo "never"
Loop ' !! 1038 'loop' without 'do'
