' TryOut.vbs: drives the try-out form as a program would drive a form of its own.
'
'     TryOutForm.exe TryOut.vbs
'
' From a batch file write  start /wait TryOutForm.exe TryOut.vbs  to have its answer in ERRORLEVEL:
' 0 when all went well, 1 when the script has an error or one of its checks failed. What goes wrong
' is told on standard error. The register script of the package must have run before.
'
' Form is the form. Form.YearPlan is the control, with its own properties and methods.
Option Explicit

Const BackButton = 0
Const NextButton = 1

' The control tells how its work goes on. An empty text takes the last one back.
Sub Form_StatusChange(Msg)
  If Msg <> "" Then Form.Print "Status: " & Msg
End Sub

' The control tells each property that changes; a form would save them then.
Sub Form_PropertyChanged(Name)
  Form.Print "Changed: " & Name
End Sub

Const TemporaryFolder = 2

Dim folder, saved, picture
folder = CreateObject("Scripting.FileSystemObject").GetSpecialFolder(TemporaryFolder).Path
saved = folder & "\TryOut.properties"
picture = folder & "\TryOut.bmp"

' Places a new control with its defaults. It begins its work as soon as messages flow, that is in
' Wait and WaitFor.
Form.Place
Form.Resize 1000, 600

' Properties as a page or a form designer sets them.
Form.YearPlan.TitleName = "Try-out"
Form.YearPlan.DisplaySubject = True
Form.YearPlan.AllEvents = True

' A control that cannot reach the calendar says so in a message. Form.Allow has it confirmed when it
' comes; Form.Expect would count it as a failure when it does not come.
Form.Allow "", "press OK", 3000
Form.Wait 3000

' The next year and back, by the buttons of the control's toolbar, counted from 0. They take part
' once the calendar was found.
On Error Resume Next
Form.Button NextButton
If Err.Number = 0 Then
  Form.Wait 1000
  Form.Button BackButton
  Form.Wait 1000
Else
  Form.Print "No year to leaf to: " & Err.Description
End If
On Error GoTo 0

' Saved properties make the same planner again.
Form.Save saved
Form.YearPlan.DisplaySubject = False
Form.Allow "", "press OK", 3000
Form.Restore saved
Form.Check Form.YearPlan.DisplaySubject, "the restored planner writes subjects"
Form.Check Form.YearPlan.TitleName = "Try-out", "the restored planner has its title"

' The control draws itself, as for a printed page.
Form.Draw picture
Form.Print "The year is drawn in " & picture & ", " & Form.Width & " x " & Form.Height & " pixels."
If Form.Dialogs <> "" Then Form.Print "Messages met:" & vbCrLf & Form.Dialogs
