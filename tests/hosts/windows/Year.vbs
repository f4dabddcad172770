' One year, seen and changed as its user does.
Option Explicit

Dim folder, first, item, firstAnchor, lastAnchor
folder = Form.Argument(0)

' The year is drawn: two bars say where columns and rows lie, and a third one lies as they say.
Set first = AddItem("Anchor one", "Unused 01", Day_(1, 5), 3)
AddItem "Anchor two", "Unused 02", Day_(12, 20), 3
AddItem "Summer", "Unused 03", Day_(7, 14), 5
PlaceYear "Test"
Form.YearPlan.DisplaySubject = True
Form.Check InStr(Form.PropertiesChanged, "DisplaySubject") > 0, "No property change was told"
Form.Draw folder & "\year.bmp"
firstAnchor = Split(AwaitBar(ColourOf(1)), " ")
lastAnchor = Split(AwaitBar(ColourOf(2)), " ")
CheckPlace ColourOf(3), 7, 14, 5

' Items that come, move and go.
Set item = AddItem("Arrives", "Unused 04", Day_(9, 8), 1)
CheckPlace ColourOf(4), 9, 8, 1
item.Start = Day_(10, 19)
item.End = Day_(10, 21)
item.Save
CheckPlace ColourOf(4), 10, 19, 2
item.Delete
AwaitNoBar ColourOf(4)

' The legend's menu and its edit: the category has another name, in the appointments too.
Form.RightClick Form.Width - 100, 49
Form.Expect "menu", "key 40; key 40; key 13"
Form.WaitForDialogs
Form.Wait 100
Form.Type "Holiday"
Form.Press 13
Form.Expect "Rename Category", "press 6"
Form.WaitForDialogs
Form.Check InStr(ColourList("Test"), "Holiday|878787") > 0, "Renamed: " & ColourList("Test")
Form.Check InStr(ColourList("Test"), "Unused 01") = 0, "The old name stays"
AwaitBar ColourOf(1)
AwaitNoBar "CCCCCC"

' The system's own colour dialog.
Form.Expect "", "edit 706=250; edit 707=20; edit 708=200; press 1"
Form.YearPlan.CatColour "Unused 02"
AwaitBar "FA14C8"
AwaitNoBar ColourOf(2)

' A new category, by the input box.
Form.RightClick Form.Width - 100, 49
Form.Expect "menu", "key 40; key 13"
Form.Expect "New Category", "edit 100=Fair; press OK"
Form.WaitForDialogs
Form.Check InStr(ColourList("Test"), "Fair|") > 0, "Added: " & ColourList("Test")

' The filter's dialog, set and cleared.
Form.Button 2
Form.Expect "Category Filter", "row text:Show appointments of these categories=0; press Cancel"
Form.WaitForDialogs
Form.Button 2
Form.Expect "Category Filter", "edit text:Names, joined by "", ""=Unused 02; press OK"
Form.WaitForDialogs
AwaitNoBar ColourOf(1)
AwaitBar "FA14C8"
Form.Check CreateObject("WScript.Shell").RegRead("HKCU\Software\VB and VBA Program Settings\Year Planner\Filtering Test\Active") = "Unused 02", "The filter is not kept"
Form.Button 2
Form.Expect "Category Filter", "press Clear; press OK"
Form.WaitForDialogs
AwaitBar ColourOf(1)

' Export, by the form and the system's dialog.
Form.Button 5
Form.Expect "Export", "press OK"
Form.Expect "Save Velkor Data", "edit file=" & folder & "\year.xml; press 1"
Form.Expect "OutlookVelkor", "press OK"
Form.WaitForDialogs

' The preview, the system's print dialog, and the file that the printer's port asks for.
Form.Button 3
Form.Expect "Print preview", "button 1"
Form.Expect "", "press 2"
Form.Expect "Print preview", "button 0"
Form.Expect "", "edit 201=" & folder & "\year.ps; press 1"
Form.Expect "Print preview", "press"
Form.WaitForDialogs

' What the import asks for, and the about box from the other menu.
Form.Button 4
Form.Expect "Open Categories File", "edit file=" & folder & "\year.xml; press 1"
Form.Expect "OutlookVelkor", "press OK"
Form.WaitForDialogs
Form.RightClick 400, 300
Form.Expect "menu", "key 38; key 13"
Form.Expect "", "press OK"
Form.WaitForDialogs

' An appointment opens in Outlook, where the test gives it another subject, and is deleted.
ClickBar ColourOf(3), False
Form.Check Form.WaitFor("Downloading", Patience), "No refresh after an appointment was saved"
Form.Check Form.WaitFor("", Patience), "No end of the refresh after an appointment was saved"
ClickBar ColourOf(3), True
Form.Expect "menu", "key 40; key 40; key 40; key 13"
Form.Expect "OutlookVelkor", "press 7"
Form.WaitForDialogs
AwaitBar ColourOf(3)
ClickBar ColourOf(3), True
Form.Expect "menu", "key 40; key 40; key 40; key 13"
Form.Expect "OutlookVelkor", "press 6"
Form.WaitForDialogs
AwaitNoBar ColourOf(3)

' The button refreshes.
Refresh

Form.Print Form.Dialogs
Form.Print "Done"

Function ColumnOf(month, day)
  ColumnOf = Weekday(Day_(month, 1)) - 1 + day
End Function

' By the edges of the two anchors.
Function LeftOf(month, day)
  LeftOf = firstAnchor(0) + (ColumnOf(month, day) - ColumnOf(1, 5)) * _
      (lastAnchor(0) - firstAnchor(0)) / (ColumnOf(12, 20) - ColumnOf(1, 5))
End Function

Function TopOf(month)
  TopOf = firstAnchor(1) + (month - 1) * (lastAnchor(1) - firstAnchor(1)) / 11
End Function

' Waits until the bar of a colour lies where the days do; the mark of today covers an edge.
Sub CheckPlace(colour, month, day, days)
  Dim left_, edges, found
  For left_ = Patience To 0 Step -50
    found = AwaitBar(colour)
    If found = "" Then Exit Sub
    edges = Split(found, " ")
    If Abs(edges(0) - LeftOf(month, day)) < 5 And Abs(edges(1) - TopOf(month)) < 5 And _
        Abs(edges(2) - LeftOf(month, day + days)) < 5 Then Exit Sub
    Form.Wait 50
  Next
  Form.Check False, colour & " lies at " & found & " and not at " & LeftOf(month, day) & " " & _
      TopOf(month) & " " & LeftOf(month, day + days)
End Sub
