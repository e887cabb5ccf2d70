WScript.Echo "never"
For a(1) = 1 To 2 : Next ' !! 1040 Invalid 'for' loop control variable
