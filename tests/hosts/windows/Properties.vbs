' Properties saved and restored, where there is no calendar program.
Option Explicit

Dim path, stream
path = Form.Argument(0) & "\form.properties"

Form.Expect "OutlookVelkor", "press OK"
Form.Place
Form.WaitForDialogs
Form.YearPlan.Folder = "Team\Leave"
Form.YearPlan.AllEvents = True
Form.YearPlan.TitleName = "Saved"
Form.Check Form.PropertiesChanged = "Folder" & vbCrLf & "AllEvents" & vbCrLf & "TitleName", _
    "Told: " & Form.PropertiesChanged
Form.Save path
Form.YearPlan.TitleName = "Other"

Form.Expect "OutlookVelkor", "press OK"
Form.Check Form.Restore(path) = "", "An objection to good properties"
Form.WaitForDialogs
Form.Check Form.YearPlan.Folder = "Team\Leave", "Folder: " & Form.YearPlan.Folder
Form.Check Form.YearPlan.AllEvents, "AllEvents"
Form.Check Form.YearPlan.TitleName = "Saved", "TitleName: " & Form.YearPlan.TitleName

Set stream = CreateObject("Scripting.FileSystemObject").CreateTextFile(path, True)
stream.Write "These are none."
stream.Close
Form.Expect "OutlookVelkor", "press OK"
Form.Check Form.Restore(path) <> "", "No objection to broken properties"
Form.WaitForDialogs
Form.Check Form.YearPlan.TitleName = "Default", "Of broken ones: " & Form.YearPlan.TitleName

Form.Print Form.Dialogs
Form.Close
Form.Check Not Form.IsLoaded, "The library stays loaded"
