WScript.Echo "never"
Property Get x ' !! 1048 Must be defined inside a Class
