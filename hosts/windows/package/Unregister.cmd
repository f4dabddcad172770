@echo off
rem Takes back what Register.cmd did. Cache files, settings and calendars stay.
rem   Unregister.cmd          for the current user
rem   Unregister.cmd machine  for everybody, as administrator
setlocal
set failed=0
if /i "%~1"=="machine" goto machine

"%~dp0vkrRefresh.exe" /UnregServerPerUser
if errorlevel 1 set failed=1
regsvr32 /s /u /n /i:user "%~dp0OutlookVelkor.ocx"
if errorlevel 1 set failed=1
goto done

:machine
"%~dp0vkrRefresh.exe" /UnregServer
if errorlevel 1 set failed=1
regsvr32 /s /u "%~dp0OutlookVelkor.ocx"
if errorlevel 1 set failed=1

:done
if %failed%==1 goto failed
echo The year planner is not registered any more. The folder can be deleted.
exit /b 0

:failed
echo Something could not be taken back. Close the programs that show the planner and try again.
exit /b 1
