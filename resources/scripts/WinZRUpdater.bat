@echo off
rem Runs an installer. Usage: WinZRUpdater.bat OLD INSTALLER
setlocal DisableDelayedExpansion
if "%~2"=="" exit /b 1
if not exist "%~2" exit /b 1
"%~2"
exit /b %ERRORLEVEL%
