WScript.Echo "never"
Select Case 1
 Case 1 x = 1 End Select ' !! 1025 Expected end of statement
