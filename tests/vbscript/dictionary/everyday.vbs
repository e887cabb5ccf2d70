Dim d : Set d = CreateObject("Scripting.Dictionary")
d.Add "a", 1
d("b") = 2
d.Item("c") = 3
WScript.Echo d.Count, d.Exists("a"), d.Exists("A"), d("b") ' -> 3 True False 2
WScript.Echo Join(d.Keys, ","), Join(d.Items, ",") ' -> a,b,c 1,2,3
WScript.Echo d.Keys()(1), d.Items()(2) ' -> b 3
d.Key("a") = "z" : WScript.Echo d.Exists("a"), d("z"), Join(d.Keys, ",") ' -> False 1 z,b,c
d.Remove "b" : WScript.Echo d.Count ' -> 2
WScript.Echo IsEmpty(d("new")), d.Count ' -> True 3
d(1) = "one" : WScript.Echo d(1.0), d.Exists("1") ' -> one False
Set d("obj") = d : WScript.Echo d("obj") Is d ' -> True
d("n") = 1 : d("n") = d("n") + 1 : WScript.Echo d("n") ' -> 2
Dim t : Set t = CreateObject("scripting.dictionary")
t.CompareMode = vbTextCompare
t("Key") = 1 : WScript.Echo t("KEY"), t.Exists("key"), TypeName(t) ' -> 1 True Dictionary
On Error Resume Next
Sub Told : WScript.Echo Err.Number : Err.Clear : End Sub
d.Add "z", 1 : Told ' -> 457
d.Remove "nope" : Told ' -> 32811
t.CompareMode = 0 : Told ' -> 5
d.Add "x" : Told ' -> 450
Set x = CreateObject("Some.Thing") : WScript.Echo Err.Number, Err.Description ' -> 429 ActiveX component can't create object: 'Some.Thing'
d.RemoveAll : WScript.Echo d.Count ' -> 0
