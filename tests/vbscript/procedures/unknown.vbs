WScript.Echo "before" ' -> before
Nowhere 1 ' !! 13 Type mismatch: 'Nowhere'
