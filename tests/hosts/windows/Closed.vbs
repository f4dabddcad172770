' Outlook is closed and opened again while a year is on show.
Option Explicit

Dim held

AddItem "Before", "Unused 01", Day_(2, 3), 4
PlaceYear "Closed"
AwaitBar ColourOf(1)
Outlook.Quit

' What changed meanwhile is read once it is there again.
Set held = OpenAgain()
AddItem "Meanwhile", "Unused 02", Day_(5, 3), 4
AwaitBar ColourOf(2)
AwaitNoBar ColourOf(1)

' From then on its events come, while no refresh is under way.
Form.Wait 1000
AddItem "After", "Unused 03", Day_(7, 3), 4
AwaitBar ColourOf(3)
Form.Print "Done"

' While it ends it may still answer for its class.
Function OpenAgain()
  Dim left_
  Form.Wait 1500
  On Error Resume Next
  For left_ = Patience To 0 Step -250
    Err.Clear
    Set OpenAgain = Outlook()
    If Err.Number = 0 Then Exit Function
    Form.Wait 250
  Next
End Function
