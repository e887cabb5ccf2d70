WScript.Echo "never"
Next ' !! 1055 Unexpected 'Next'
