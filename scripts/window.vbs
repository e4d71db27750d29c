' Whether Wine can show a window: exit code 0 when a message box stood for its second, and 1 when it was gone
' at once, as it is when there is no desktop to stand on.
Dim begin
begin = Timer
CreateObject("WScript.Shell").Popup "A window", 1
' At midnight the timer begins anew.
If Timer >= begin And Timer - begin < 0.5 Then WScript.Quit 1
