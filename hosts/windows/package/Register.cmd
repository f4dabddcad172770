@echo off
rem Makes the year planner known to the programs of the current user; needs no administrator.
rem   Register.cmd          for the current user
rem   Register.cmd machine  for everybody, as administrator
setlocal
if /i "%~1"=="machine" goto machine

regsvr32 /s /n /i:user "%~dp0OutlookVelkor.ocx"
if errorlevel 1 goto failed
"%~dp0vkrRefresh.exe" /RegServerPerUser
if errorlevel 1 goto failed
goto done

:machine
regsvr32 /s "%~dp0OutlookVelkor.ocx"
if errorlevel 1 goto failed
"%~dp0vkrRefresh.exe" /RegServer
if errorlevel 1 goto failed

:done
echo The year planner is registered: OutlookVelkor.YearPlan
exit /b 0

:failed
echo The year planner could not be registered. Keep all files of the package in one folder on a
echo local disk; "machine" needs an administrator's prompt.
exit /b 1
