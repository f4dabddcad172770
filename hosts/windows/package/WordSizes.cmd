rem Names the programs that register a library for each word size of this Windows: regsvr64, regsvr32.
rem A prompt of 32 bits sees the system's 64-bit programs under another name.
set regsvr64=
set regsvr32=%SystemRoot%\System32\regsvr32.exe
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set regsvr64=%SystemRoot%\System32\regsvr32.exe
if /i "%PROCESSOR_ARCHITEW6432%"=="AMD64" set regsvr64=%SystemRoot%\Sysnative\regsvr32.exe
if defined regsvr64 set regsvr32=%SystemRoot%\SysWOW64\regsvr32.exe
if not exist "%regsvr32%" set regsvr32=
exit /b 0
