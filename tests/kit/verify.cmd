@echo off
rem Runs all programs of this kit and leaves report.txt beside this file. A double click will do.
rem .\verify.cmd [--no-pause] [--filter=TESTS]
setlocal
if not exist "%~dp0programs\windows_verify.exe" (
    echo The folder "programs" is not here. Extract all of the ZIP first, then start verify.cmd there.
    set "result=2"
    goto end
)
"%~dp0programs\windows_verify.exe" %*
set "result=%errorlevel%"
:end
if not "%~1"=="--no-pause" pause
exit /b %result%
