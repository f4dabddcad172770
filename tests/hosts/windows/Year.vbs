' One year, seen and changed as its user does.
Option Explicit

Dim folder, item, firstAnchor, lastAnchor
folder = Form.Argument(0)

' The year is drawn: two bars say where columns and rows lie, and a third one lies as they say.
AddItem "Anchor one", "Unused 01", Day_(1, 5), 3
AddItem "Anchor two", "Unused 02", Day_(12, 20), 3
AddItem "Summer", "Unused 03", Day_(7, 14), 5
PlaceYear "Test"
Form.YearPlan.DisplaySubject = True
Form.Check InStr(Form.PropertiesChanged, "DisplaySubject") > 0, "No property change was told"
Form.Draw folder & "\year.bmp"
firstAnchor = Split(Bar(ColourOf(1)), " ")
lastAnchor = Split(Bar(ColourOf(2)), " ")
CheckPlace ColourOf(3), 7, 14, 5
Form.Print "Form " & Form.ProcessId

' Items that come, move and go.
Set item = AddItem("Arrives", "Unused 04", Day_(9, 8), 1)
CheckPlace ColourOf(4), 9, 8, 1
item.Start = Day_(10, 19)
item.End = Day_(10, 21)
item.Save
CheckPlace ColourOf(4), 10, 19, 2
item.Delete
AwaitNoBar ColourOf(4)

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

' Waits until the bar of a colour lies where the days do.
Sub CheckPlace(colour, month, day, days)
  Dim left_, edges, found
  For left_ = Patience To 0 Step -50
    found = AwaitBar(colour)
    If found = "" Then Exit Sub
    edges = Split(found, " ")
    If Abs(edges(0) - LeftOf(month, day)) < 3 And Abs(edges(1) - TopOf(month)) < 3 And _
        Abs(edges(2) - LeftOf(month, day + days)) < 4 Then Exit Sub
    Form.Wait 50
  Next
  Form.Check False, colour & " lies at " & found & " and not at " & LeftOf(month, day) & " " & _
      TopOf(month) & " " & LeftOf(month, day + days)
End Sub
