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

' What every script of these tests uses; appended to each.

' In milliseconds. A constant would have to come before the script.
Function Patience()
  Patience = 15000
End Function

Function Outlook()
  Set Outlook = CreateObject("Outlook.Application")
End Function

Function Items()
  Set Items = Outlook.GetNamespace("MAPI").GetDefaultFolder(9).Items
End Function

Function AddItem(subject, category, first, days)
  Dim item
  Set item = Items().Add
  item.Subject = subject
  item.Categories = category
  item.Start = first
  item.End = first + days
  item.Save
  Set AddItem = item
End Function

' The day of a month of the displayed year.
Function Day_(month, day)
  Day_ = DateSerial(Year(Now), month, day)
End Function

' RRGGBB of the number-th category that a new planner has.
Function ColourOf(number)
  Dim value
  value = 888888 - 10101 * number
  ColourOf = TwoDigits(value And 255) & TwoDigits((value \ 256) And 255) & TwoDigits(value \ 65536)
End Function

Function TwoDigits(value)
  TwoDigits = Right("0" & Hex(value), 2)
End Function

' Places the control and waits until the year is there.
Sub PlaceYear(title)
  Form.Place
  Form.Resize 1000, 560
  Form.YearPlan.AllEvents = True
  Form.YearPlan.TitleName = title
  Form.Check Form.WaitFor("Downloading", Patience), "No refresh at the start of " & title
  Form.Check Form.WaitFor("", Patience), "The refresh of " & title & " does not end"
End Sub

' "left top right bottom" of the bars of a colour; beside the grid stands the legend.
Function Bar(colour)
  Form.Draw
  Bar = Form.FindColour(colour, 0, 0, Form.Width - 150, Form.Height)
End Function

' Waits for a bar, and answers what Bar does.
Function AwaitBar(colour)
  Dim left_
  AwaitBar = Bar(colour)
  For left_ = Patience To 0 Step -50
    If AwaitBar <> "" Then Exit Function
    Form.Wait 50
    AwaitBar = Bar(colour)
  Next
  Form.Check False, "There is no bar of the colour " & colour
End Function

Sub AwaitNoBar(colour)
  Dim left_
  For left_ = Patience To 0 Step -50
    If Bar(colour) = "" Then Exit Sub
    Form.Wait 50
  Next
  Form.Check False, "There still is a bar of the colour " & colour
End Sub

' Refreshes by the button, to the end.
Sub Refresh()
  Form.Click Form.Width - 130, 20
  Form.Check Form.WaitFor("Downloading", Patience), "The button does not refresh"
  Form.Check Form.WaitFor("", Patience), "The refresh does not end"
End Sub

Sub ClickBar(colour, right_)
  Dim edges
  edges = Split(AwaitBar(colour), " ")
  If UBound(edges) < 3 Then Exit Sub
  If right_ Then
    Form.RightClick edges(0) + 3, edges(1) + 3
  Else
    Form.Click edges(0) + 3, edges(1) + 3
  End If
End Sub

' The text of the hidden appointment that keeps a title's colours.
Function ColourList(title)
  Dim list, item
  ColourList = ""
  Set list = Items()
  Set item = list.GetFirst
  Do Until item Is Nothing
    If item.Subject = "PLEASE IGNORE - Velkor Category Colours: " & title Then ColourList = item.Body
    Set item = list.GetNext
  Loop
End Function
