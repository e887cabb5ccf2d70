' What is written out in the source decides how a text and a number compare.
Dim s, n, ten
s = "5" : n = 5 : ten = "010"
WScript.Echo s = 5 ' -> True
WScript.Echo "5" = 5 ' -> True
x = ((("5")) = 5) : WScript.Echo x ' -> True
WScript.Echo ten = 10 ' -> True
WScript.Echo "010" = CInt(10) ' -> False
WScript.Echo "10" > CByte(5) ' -> False
WScript.Echo s = n ' -> False
WScript.Echo n < s ' -> True
WScript.Echo s > 99999 ' -> False
n = 99999
WScript.Echo s > n ' -> True
WScript.Echo "True" = True, "true" = True ' -> True False
Dim b : b = True : s = "True"
WScript.Echo s = b, "x" = b ' -> True False
Const five = 5
s = "5"
WScript.Echo s = five ' -> False
WScript.Echo s = -5 ' -> False
s = "-5"
WScript.Echo s = -5 ' -> False
s = "5"
Select Case s
  Case five : WScript.Echo "const"
  Case 5 : WScript.Echo "literal" ' -> literal
End Select
Select Case "010"
  Case CInt(10) : WScript.Echo "soft"
  Case Else : WScript.Echo "else" ' -> else
End Select
WScript.Echo "" = Empty, 0 = Empty, "0" = Empty ' -> True True False
WScript.Echo "a" < "B", "B" < "a" ' -> False True
WScript.Echo IsNull(1 = Null) ' -> True
WScript.Echo #1/1/2000# < #1/2/2000#, 1.5 = CCur(1.5) ' -> True True
On Error Resume Next
x = ("abc" = 5)
WScript.Echo Err.Number ' -> 13
Err.Clear
s = ""
x = (s = 5)
WScript.Echo Err.Number ' -> 13
