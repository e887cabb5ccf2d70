WScript.Echo "never"
If x ' !! 1017 Expected 'Then'
