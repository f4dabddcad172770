; hosts/windows/package/Install.nsh: the pages of the installation and its steps, which are taken
; back when one fails.

Function .onInit
  StrCpy $AllUsers 0
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/AllUsers" $1
  ${IfNot} ${Errors}
    StrCpy $AllUsers 1
    Call NeedAdministrator
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 != "Admin"
      StrCpy $AllUsers 0
    ${EndIf}
  ${EndIf}
  Call FindWordSizes
  ${If} $INSTDIR == ""
    Call ChooseFolder
  ${Else}
    Call UseContext
    ReadRegStr $0 SHCTX "${ENTRY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} $0 != $INSTDIR
      SetErrorLevel ${FAILED}
      Push "The year planner is installed in $0: remove it first to have it in $INSTDIR. Nothing was changed."
      Call Tell
      Quit
    ${EndIf}
  ${EndIf}
FunctionEnd

; What is installed is upgraded where it is.
Function SkipWhereInstalled
  ReadRegStr $0 SHCTX "${ENTRY}" "InstallLocation"
  ${If} $0 != ""
    StrCpy $INSTDIR $0
    Abort
  ${EndIf}
FunctionEnd

; Goes on with an administrator's rights only: asks for them by starting anew.
Function NeedAdministrator
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    Return
  ${EndIf}
  SetErrorLevel ${NEEDS_ADMINISTRATOR}
  ${If} ${Silent}
    Push "To install for everybody start this as administrator. Nothing was changed."
    Call Tell
    Quit
  ${EndIf}
  ClearErrors
  ExecShell "runas" "$EXEPATH" "/AllUsers"
  ${If} ${Errors}
    Push "Without an administrator's rights the year planner can be installed only for you."
    Call Tell
    Return
  ${EndIf}
  Quit
FunctionEnd

; The folder of the installation that is there, or a usual one.
Function ChooseFolder
  Call UseContext
  ReadRegStr $INSTDIR SHCTX "${ENTRY}" "InstallLocation"
  ${If} $INSTDIR != ""
    Return
  ${EndIf}
  ${If} $AllUsers == 1
    StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
  ${Else}
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
  ${EndIf}
FunctionEnd

Function ShowUsersPage
  ${If} $AllUsers == 1
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Choose users" "For whom the year planner is installed."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "Only for &me"
  Pop $OnlyMe
  ${NSD_CreateLabel} 12u 23u 95% 22u "Needs no administrator. Programs that run as administrator do not find it."
  Pop $0
  ${NSD_CreateRadioButton} 0 52u 100% 12u "For &everybody who uses this computer"
  Pop $Everybody
  ${NSD_CreateLabel} 12u 65u 95% 22u "Windows asks for an administrator's consent."
  Pop $0
  ${NSD_Check} $OnlyMe
  ${NSD_SetFocus} $OnlyMe
  nsDialogs::Show
FunctionEnd

Function LeaveUsersPage
  ${NSD_GetState} $Everybody $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $AllUsers 1
    Call NeedAdministrator
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 != "Admin"
      StrCpy $AllUsers 0
      Abort
    ${EndIf}
    Call ChooseFolder
  ${EndIf}
FunctionEnd

Function ShowLastPage
  !insertmacro MUI_HEADER_TEXT "Installed" "The year planner is ready."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 10u 100% 30u "Programs that host controls find it as OutlookVelkor.YearPlan. The start page tells how to place it there; both are in the start menu, too."
  Pop $0
  ${NSD_CreateCheckBox} 0 48u 100% 12u "Start the &try-out form"
  Pop $StartForm
  ${NSD_Check} $StartForm
  ${NSD_CreateCheckBox} 0 66u 100% 12u "Show the start &page"
  Pop $ShowStartPage
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:&Finish"
  GetDlgItem $0 $HWNDPARENT 3
  EnableWindow $0 0
  GetDlgItem $0 $HWNDPARENT 2
  EnableWindow $0 0
  nsDialogs::Show
FunctionEnd

; The desktop starts the form, which must not inherit an administrator's rights.
Function LeaveLastPage
  ${NSD_GetState} $StartForm $0
  ${If} $0 == ${BST_CHECKED}
  ${AndIf} $Has64 == 1
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\64-bit\TryOutForm.exe"'
  ${ElseIf} $0 == ${BST_CHECKED}
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\32-bit\TryOutForm.exe"'
  ${EndIf}
  ${NSD_GetState} $ShowStartPage $0
  ${If} $0 == ${BST_CHECKED}
    ExecShell "open" "$INSTDIR\README.html"
  ${EndIf}
FunctionEnd

; Moves the files that the list $R0 names from folder $R1 to $R2; those that are not there are
; passed over. A failure is noted.
Function MoveListed
  ClearErrors
  FileOpen $R3 $R0 r
  ${Do}
    FileRead $R3 $R4
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    ${TrimNewLines} $R4 $R4
    ${If} ${FileExists} "$R1\$R4"
      ${GetParent} "$R2\$R4" $R5
      CreateDirectory $R5
      ClearErrors
      Rename "$R1\$R4" "$R2\$R4"
      ${If} ${Errors}
      ${AndIf} $Failure == ""
        StrCpy $Failure "$R2\$R4 cannot be written."
      ${EndIf}
    ${EndIf}
    ClearErrors
  ${Loop}
  FileClose $R3
  ClearErrors
FunctionEnd

!macro MoveListed list from to
  StrCpy $R0 "$PLUGINSDIR\${list}.lst"
  StrCpy $R1 "${from}"
  StrCpy $R2 "${to}"
  Call MoveListed
!macroend

Function Register
  ${If} $AllUsers == 1
    !insertmacro ForBothSizes "" "" "/RegServer"
  ${Else}
    !insertmacro ForBothSizes "" "/n /i:user" "/RegServerPerUser"
  ${EndIf}
FunctionEnd

; The outermost folder of $INSTDIR that is not there.
Function FindFirstFolder
  StrCpy $FirstFolder ""
  StrCpy $0 $INSTDIR
  ${DoUntil} ${FileExists} "$0\*.*"
    StrCpy $FirstFolder $0
    ${GetParent} $0 $0
    ${If} $0 == ""
      ${ExitDo}
    ${EndIf}
  ${Loop}
FunctionEnd

; Everything as it was before, with the failure told.
Function TakeBack
  StrCpy $9 $Failure
  Call Unregister
  ; A file that was in the way of a new one stays.
  !insertmacro MoveListed "new" "$INSTDIR" "$INSTDIR\new~"
  StrCpy $Failure ""
  !insertmacro MoveListed "old" "$INSTDIR\old~" "$INSTDIR"
  Call Register
  Call RemoveBeside
  StrCpy $R0 "$PLUGINSDIR\new.lst"
  StrCpy $R1 "$INSTDIR"
  Call RemoveEmptyFolders
  Call RemoveMadeFolders
  SetErrorLevel ${FAILED}
  ${If} $Failure == ""
    Push "The year planner could not be installed: $9$\r$\nEverything is as it was."
  ${Else}
    Push "The year planner could not be installed: $9$\r$\nWhat was there could not be brought back: $Failure"
  ${EndIf}
  Call Tell
FunctionEnd

; The folders beside the files, which only an installation uses.
Function RemoveBeside
  SetOutPath $TEMP
  RMDir /r "$INSTDIR\new~"
  RMDir /r "$INSTDIR\old~"
FunctionEnd

Function .onInstFailed
  ; The new files could not be unpacked, nothing else was touched.
  ${If} $Failure == ""
    Call RemoveBeside
    Call RemoveMadeFolders
    SetErrorLevel ${FAILED}
  ${EndIf}
FunctionEnd

; What an installation that was stopped has set aside lies where it was.
Function BringBack
  ${If} ${FileExists} "$INSTDIR\old~\*.*"
    !insertmacro MoveListed "new" "$INSTDIR" "$INSTDIR\new~"
    System::Call 'kernel32::CopyFile(t "$INSTDIR\old~\Files.lst", t "$PLUGINSDIR\old.lst", i 0)'
    !insertmacro MoveListed "old" "$INSTDIR\old~" "$INSTDIR"
    StrCpy $Failure ""
  ${EndIf}
  RMDir /r "$INSTDIR\new~"
FunctionEnd

; The entries of the start menu.
Function AddToStartMenu
  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  ${If} $Has64 == 1
    SetOutPath "$INSTDIR\64-bit"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}\Try-out form.lnk" "$INSTDIR\64-bit\TryOutForm.exe"
  ${EndIf}
  ${If} $Has32 == 1
    SetOutPath "$INSTDIR\32-bit"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}\Try-out form (32 bits).lnk" "$INSTDIR\32-bit\TryOutForm.exe"
  ${EndIf}
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Start page.lnk" "$INSTDIR\README.html"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Help.lnk" "$INSTDIR\docs\help.html"
FunctionEnd

; The entry in the list of programs. The error flag tells of a failure.
Function AddToPrograms
  ; The list itself goes with its last entry where this made it.
  StrCpy $1 0x80000001
  ${If} $AllUsers == 1
    StrCpy $1 0x80000002
  ${EndIf}
  ReadRegStr $2 SHCTX "${ENTRY}" "MadeList"
  System::Call 'advapi32::RegOpenKeyEx(p $1, t "${UNINSTALL}", i 0, i 0x20119, *p .r3) i.r4'
  ${If} $4 == 0
    System::Call 'advapi32::RegCloseKey(p r3)'
  ${Else}
    StrCpy $2 1
  ${EndIf}
  ClearErrors
  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${TITLE}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "${PUBLISHER}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "Readme" "$INSTDIR\README.html"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" $8
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
  WriteRegStr SHCTX "${ENTRY}" "FirstFolder" "$FirstFolder"
  WriteRegStr SHCTX "${ENTRY}" "MadeList" "$2"
FunctionEnd

Section
  Call UseContext
  Call WaitUntilFree
  InitPluginsDir
  File "/oname=$PLUGINSDIR\new.lst" "${LIST}"
  Call BringBack
  StrCpy $Failure ""
  ReadRegStr $0 SHCTX "${ENTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    ReadRegStr $FirstFolder SHCTX "${ENTRY}" "FirstFolder"
  ${Else}
    Call FindFirstFolder
  ${EndIf}

  ; The new files lie complete beside the old ones before anything changes.
  SetOutPath "$INSTDIR\new~"
  File "${STAGE}\README.html"
  File "${STAGE}\LICENSE.txt"
  File "${STAGE}\TryOut.vbs"
  File "/oname=Files.lst" "${LIST}"
  File /r "${STAGE}\docs"
  ${If} $Has64 == 1
    File /r "${STAGE}\64-bit"
  ${EndIf}
  !ifdef HOLDERS32
    ${If} $Has32 == 1
      File /r "${STAGE}\32-bit"
    ${EndIf}
  !endif
  WriteUninstaller "$INSTDIR\new~\Uninstall.exe"
  ${GetSize} "$INSTDIR\new~" "/S=0K" $8 $3 $4

  ; Those of another version are set aside; a file that is nobody's is not replaced.
  FileOpen $0 "$PLUGINSDIR\old.lst" w
  FileClose $0
  ${If} ${FileExists} "$INSTDIR\Files.lst"
    System::Call 'kernel32::CopyFile(t "$INSTDIR\Files.lst", t "$PLUGINSDIR\old.lst", i 0)'
    Call Unregister
    !insertmacro MoveListed "old" "$INSTDIR" "$INSTDIR\old~"
    StrCpy $R0 "$PLUGINSDIR\old.lst"
    StrCpy $R1 "$INSTDIR"
    Call RemoveEmptyFolders
  ${EndIf}
  ${If} $Failure == ""
    !insertmacro MoveListed "new" "$INSTDIR\new~" "$INSTDIR"
  ${EndIf}
  ${If} $Failure == ""
    Call Register
  ${EndIf}
  ${If} $Failure == ""
    Call AddToPrograms
    ${If} ${Errors}
      StrCpy $Failure "The list of programs cannot be written."
    ${EndIf}
  ${EndIf}
  ${If} $Failure != ""
    Call TakeBack
    Abort
  ${EndIf}
  Call AddToStartMenu
  Call RemoveBeside
  SetErrorLevel 0
SectionEnd
