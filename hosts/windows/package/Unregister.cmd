@echo off
rem Takes back what Register.cmd did. Cache files, settings and calendars stay.
rem   Unregister.cmd          for the current user
rem   Unregister.cmd machine  for everybody, as administrator
setlocal
set library=/n /i:user
set program=/UnregServerPerUser
if /i "%~1"=="machine" set library=
if /i "%~1"=="machine" set program=/UnregServer
call "%~dp0WordSizes.cmd"

set failed=0
if defined regsvr64 call :unregister 64 "%regsvr64%"
if defined regsvr32 call :unregister 32 "%regsvr32%"
if %failed%==1 goto failed
echo The year planner is not registered any more. The folder can be deleted.
exit /b 0

:unregister
if not exist "%~dp0%1-bit\OutlookVelkor.ocx" exit /b 0
"%~dp0%1-bit\vkrRefresh.exe" %program%
if errorlevel 1 set failed=1
"%~2" /s /u %library% "%~dp0%1-bit\OutlookVelkor.ocx"
if errorlevel 1 set failed=1
exit /b 0

:failed
echo Something could not be taken back. Close the programs that show the planner and try again.
exit /b 1
