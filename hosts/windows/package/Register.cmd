@echo off
rem Makes the year planner known to programs of both word sizes; for the current user, who needs no
rem administrator, or for everybody.
rem   Register.cmd          for the current user
rem   Register.cmd machine  for everybody, as administrator
setlocal
set library=/n /i:user
set program=/RegServerPerUser
set whom=
if /i "%~1"=="machine" set library=
if /i "%~1"=="machine" set program=/RegServer
if /i "%~1"=="machine" set whom=machine
call "%~dp0WordSizes.cmd"

if defined regsvr64 call :register 64 "%regsvr64%"
if errorlevel 1 goto failed
if defined regsvr32 call :register 32 "%regsvr32%"
if errorlevel 1 goto failed
echo The year planner is registered: OutlookVelkor.YearPlan
exit /b 0

:register
if not exist "%~dp0%1-bit\OutlookVelkor.ocx" exit /b 0
"%~2" /s %library% "%~dp0%1-bit\OutlookVelkor.ocx"
if errorlevel 1 exit /b 1
"%~dp0%1-bit\vkrRefresh.exe" %program%
if errorlevel 1 exit /b 1
exit /b 0

:failed
call "%~dp0Unregister.cmd" %whom% >nul 2>&1
echo The year planner could not be registered. Keep all files of the package in one folder on a
echo local disk; "machine" needs an administrator's prompt.
exit /b 1
