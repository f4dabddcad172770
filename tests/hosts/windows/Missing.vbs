' No cache utility, no printer, and a registry without the keys that are read.
Option Explicit

AddItem "Before", "Unused 01", Day_(2, 3), 4
Form.Expect "OutlookVelkor", "press OK"
Form.Place
Form.Resize 1000, 560
Form.WaitForDialogs
Form.Check InStr(Form.Dialogs, "(Step:10)") > 0, "No step: " & Form.Dialogs
Form.Check InStr(Form.Dialogs, "The cache utility is not installed") > 0, "No utility: " & Form.Dialogs

' What Outlook tells is seen all the same.
AddItem "After", "Unused 02", Day_(3, 3), 4
AwaitBar ColourOf(2)

Form.Button 3
Form.Expect "OutlookVelkor", "press OK"
Form.WaitForDialogs
Form.Check InStr(Form.Dialogs, "There is no printer") > 0, "No printer: " & Form.Dialogs

Form.Button 2
Form.Expect "Category Filter", "press OK"
Form.WaitForDialogs
Form.Print Form.Dialogs
Form.Print "Done"
