' Holds a year that another program reads, until that says it is done.
Option Explicit

Dim files
Set files = CreateObject("Scripting.FileSystemObject")
PlaceYear "Reader"
files.CreateTextFile(Form.Argument(0) & "\ready").Close
Do Until files.FileExists(Form.Argument(0) & "\done")
  Form.Wait 20
Loop
Form.Print "Done"
