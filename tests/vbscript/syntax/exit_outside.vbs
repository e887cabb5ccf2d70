WScript.Echo "never"
Exit For ' !! 1039 Invalid 'exit' statement
