; hosts/windows/package/Uninstall.nsh: takes everything away that the installation added.

Function un.onInit
  Call un.FindWordSizes
  StrCpy $AllUsers 0
  Call un.UseContext
  ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Return
  ${EndIf}
  ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
  ${If} $0 != $INSTDIR
    Push "$INSTDIR is not where the year planner was installed. Nothing was changed."
    Call un.Tell
    SetErrorLevel ${FAILED}
    Quit
  ${EndIf}
  StrCpy $AllUsers 1
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 != "Admin"
    SetErrorLevel ${NEEDS_ADMINISTRATOR}
    ${If} ${Silent}
      Push "It is installed for everybody: start this as administrator. Nothing was changed."
      Call un.Tell
    ${Else}
      ExecShell "runas" "$INSTDIR\Uninstall.exe"
    ${EndIf}
    Quit
  ${EndIf}
FunctionEnd

; Deletes the files that the list $R0 names below $R1. A failure is noted.
Function un.DeleteListed
  ClearErrors
  FileOpen $R3 $R0 r
  ${If} ${Errors}
    StrCpy $Failure "The list of its files, $INSTDIR\Files.lst, cannot be read."
    Return
  ${EndIf}
  ${Do}
    FileRead $R3 $R4
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    ${TrimNewLines} $R4 $R4
    ${If} $R4 == "Files.lst"
    ${OrIf} $R4 == "Uninstall.exe"
      ; Until all else is gone, so that what failed can be tried again.
      ${Continue}
    ${EndIf}
    Delete "$R1\$R4"
    ${If} "$R1\$R4" == $EXEPATH
      ; It runs from there where the caller waits for its end, and goes after that.
      ClearErrors
    ${EndIf}
    ${If} ${Errors}
    ${AndIf} $Failure == ""
      StrCpy $Failure "$R1\$R4 cannot be deleted."
    ${EndIf}
    ClearErrors
  ${Loop}
  FileClose $R3
FunctionEnd

; Removes this program, a copy or itself, once it has ended, with the folders that it alone is in;
; the system need not do so when it starts again.
Function un.RemoveItself
  nsExec::Exec '"$PLUGINSDIR\SetupHelper.exe" /Forget "$EXEDIR"'
  Pop $0
  StrCpy $1 'rmdir "$EXEDIR"'
  ${If} $EXEDIR == $INSTDIR
  ${AndIf} $FirstFolder != ""
    StrCpy $0 $INSTDIR
    ${DoUntil} $0 == $FirstFolder
      ${GetParent} $0 $0
      ${If} $0 == ""
        ${ExitDo}
      ${EndIf}
      StrCpy $1 '$1 & rmdir "$0"'
    ${Loop}
  ${EndIf}
  SetOutPath $TEMP
  ExecShell "" "$SYSDIR\cmd.exe" '/d /c for /l %n in (1,1,60) do if exist "$EXEPATH" (ping -n 2 127.0.0.1 >nul & del /q "$EXEPATH" & $1 & cd . )' SW_HIDE
FunctionEnd

Section "Uninstall"
  Call un.UseContext
  Call un.WaitUntilFree
  StrCpy $Failure ""
  ReadRegStr $FirstFolder SHCTX "${ENTRY}" "FirstFolder"
  ReadRegStr $8 SHCTX "${ENTRY}" "MadeList"
  System::Call 'kernel32::CopyFile(t "$INSTDIR\Files.lst", t "$PLUGINSDIR\old.lst", i 0)'
  SetOutPath $TEMP
  Call un.Unregister
  ; Only what is unregistered may go: its files would be missed.
  ${If} $Failure == ""
    StrCpy $R0 "$PLUGINSDIR\old.lst"
    StrCpy $R1 "$INSTDIR"
    Call un.DeleteListed
  ${EndIf}
  ${If} $Failure == ""
    Delete "$INSTDIR\Files.lst"
    ${If} "$INSTDIR\Uninstall.exe" != $EXEPATH
      Delete "$INSTDIR\Uninstall.exe"
    ${EndIf}
    Call un.RemoveEmptyFolders
  ${EndIf}
  ${If} $Failure != ""
    SetErrorLevel ${FAILED}
    Push "The year planner could not be removed: $Failure"
    Call un.Tell
    Abort
  ${EndIf}
  Delete "$SMPROGRAMS\${PRODUCT}\Try-out form.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Try-out form (32 bits).lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Start page.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Help.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"
  Call un.RemoveMadeFolders
  DeleteRegKey SHCTX "${ENTRY}"
  ${If} $8 == 1
    DeleteRegKey /ifempty SHCTX "${UNINSTALL}"
  ${EndIf}
  Call un.RemoveItself
  SetErrorLevel 0
SectionEnd
