WScript.Echo "say ""hi""" ' -> say "hi"
WScript.Echo TypeName(#1/2/2003#), #1/2/2003# ' -> Date 1/2/2003
WScript.Echo #2003-01-02 13:04:05# ' -> 1/2/2003 1:04:05 PM
WScript.Echo #5:00 PM# ' -> 5:00:00 PM
WScript.Echo #March 5, 1999# ' -> 3/5/1999
WScript.Echo #12/31/49#, #1/1/50# ' -> 12/31/2049 1/1/1950
WScript.Echo Len("a" & vbCrLf & "b") ' -> 4
' Characters beyond the first plane count as two units.
WScript.Echo Len("𝄞") ' -> 2
