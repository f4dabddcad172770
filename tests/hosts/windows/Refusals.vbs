' What Outlook refuses, puts off and breaks off, and a form that closes in the middle.
Option Explicit

Dim signals, closes
Set signals = CreateObject("Scripting.FileSystemObject")

' A session that is refused is told, and the planner stays as it is.
Outlook.Testing.RefuseLogon True
Form.Expect "OutlookVelkor", "press OK"
Form.Place
Form.WaitForDialogs
Form.Check InStr(Form.Dialogs, "(Step:1)") > 0, "Refused: " & Form.Dialogs
Form.Check Form.YearPlan.TitleName = "Default", "It does not answer"

' The button starts it up again, and tells again.
Form.Resize 1000, 560
Form.Expect "OutlookVelkor", "press OK"
Form.Click Form.Width - 130, 20
Form.WaitForDialogs
Form.Check UBound(Split(Form.Dialogs, "(Step:1)")) = 2, "Pressed: " & Form.Dialogs
Outlook.Testing.RefuseLogon False
Refresh
Form.Close

' Calls that are put off or refused in the middle of a refresh are made again.
Outlook.Testing.AddMany Year(Now), 40
PlaceYear "Faults"
Outlook.Testing.Slow 15
RefreshWith "Busy"
RefreshWith "Refuse"
Form.Check UBound(Split(Form.Dialogs, "OutlookVelkor: ")) = 2, "Told: " & Form.Dialogs

' A form that closes while its year is read takes the utility with it.
Outlook.Testing.Slow 100
Form.Click Form.Width - 130, 20
Form.Check Form.WaitFor("Downloading", Patience), "The button does not refresh"
Form.Wait 300
Form.Close
Form.Check Not Form.IsLoaded, "The library stays loaded"
signals.CreateTextFile(Form.Argument(0) & "\closed", True).Close
AwaitFile "gone"
Outlook.Testing.ClearFaults

' So does one that closes in the planner's own event.
closes = True
Form.Place
Form.Resize 1000, 560
AwaitUnloaded

' Outlook ends in the middle: that refresh fails, and the next one has a new Outlook.
PlaceYear "Faults"
Outlook.Testing.ExitIn "GetNext"
Form.Click Form.Width - 130, 20
Form.Expect "OutlookVelkor", "press OK"
Form.WaitForDialogs
Form.Check InStr(Form.Errors, "Error occured while fetching events.") > 0, "Event: " & Form.Errors
Refresh
Form.Print Form.Dialogs
Form.Print "Done"

Sub Form_StatusChange(Msg)
  If Not closes Or Msg = "" Then Exit Sub
  closes = False
  Form.Close
End Sub

Sub RefreshWith(fault)
  Form.Click Form.Width - 130, 20
  Form.Check Form.WaitFor("Downloading", Patience), "The button does not refresh"
  If fault = "Busy" Then Outlook.Testing.Busy 5 Else Outlook.Testing.Refuse 5
  Form.Check Form.WaitFor("", Patience), "The refresh does not end: " & fault
End Sub

' What runs below the event keeps the library until messages flow again.
Sub AwaitUnloaded()
  Dim left_
  For left_ = Patience To 0 Step -50
    Form.Wait 50
    If Not closes Then Form.Close
    If Not Form.IsLoaded Then Exit Sub
  Next
  Form.Check False, "Closed in an event the library stays loaded"
End Sub

' Waits for what the test has seen.
Sub AwaitFile(name)
  Dim left_
  For left_ = Patience To 0 Step -50
    If signals.FileExists(Form.Argument(0) & "\" & name) Then Exit Sub
    Form.Wait 50
  Next
  Form.Check False, "The utility outlives its client"
End Sub
