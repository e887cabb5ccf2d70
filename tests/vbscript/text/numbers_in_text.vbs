Dim t
For Each t In Array(" 5 ", "-5", "5-", "(5)", "1,234.5", "1,,0", "$5", "$-5", "-$5", "5$", ".5", "5.", "1e3", "1E-2", "&HFF", "&o17")
  WScript.Echo CDbl(t)
Next
' == 5
' == -5
' == -5
' == -5
' == 1234.5
' == 10
' == 5
' == -5
' == -5
' == 5
' == 0.5
' == 5
' == 1000
' == 0.01
' == 255
' == 15
Dim bad
For Each t In Array("", " ", ".", "$", "0x10", "5 e1", "1.1.1", "$&HA", "abc", "--5", "1e", "٣")
  bad = bad & IsNumeric(t) & " "
Next
WScript.Echo Trim(bad) ' -> False False False False False False False False False False False False
WScript.Echo IsNumeric(Empty), IsNumeric(True), IsNumeric(5), IsNumeric("5"), IsNumeric(Null), IsNumeric(Nothing), IsNumeric(Array(1)), IsNumeric(Now) ' -> True True True True False False False False
WScript.Echo CBool("true"), CBool("#FALSE#"), CBool(2), CBool("0") ' -> True False True False
On Error Resume Next
x = CInt("TRUE") : WScript.Echo Err.Number ' -> 13
