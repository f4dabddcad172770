' Changes by the thousand and keys that are held, in a form with the stack of a usual program.
Option Explicit

Dim i

' Subjects that no text between apostrophes can name arrive without a word.
PlaceYear "Many"
Form.Click 400, 300
For i = 1 To 30
  AddItem "Tom's " & i, "Unused 01", Day_(1 + i Mod 12, 1 + i Mod 28), 2
Next
AwaitBar ColourOf(1)

' Thousands of removals at once, while the year is paged through.
Outlook.Testing.AddMany Year(Now) - 1, 3000
AddItem "Seen", "Unused 02", Day_(7, 7), 3
AwaitBar ColourOf(2)
Outlook.Testing.Clear
For i = 1 To 60
  Form.Press 34
  Form.Press 33
Next
AwaitNoBar ColourOf(2)
AwaitNoBar ColourOf(1)
AddItem "Last", "Unused 03", Day_(7, 7), 3
AwaitBar ColourOf(3)
Form.Print Form.Dialogs
Form.Print "Done"
