WScript.Echo "never"
If True Then
 x = 1 End If ' !! 1025 Expected end of statement
