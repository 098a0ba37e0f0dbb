@echo off
rem Makes the sample company's dictionary and data files in this folder, from company.toml and data\*.csv.
setlocal
cd /d "%~dp0"
set broken=
..\..\qrndata build company.toml .
if errorlevel 1 goto failed
for %%f in (data\*.csv) do call :import %%~nf
if defined broken goto failed
echo The data is here. Next: ..\..\qrnform customers.frm
goto :eof

:import
..\..\qrndata import . %1 data\%1.csv
if errorlevel 1 set broken=1
goto :eof

:failed
echo The data could not be made: see above.
exit /b 1
