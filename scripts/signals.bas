
Public Sub Signal(name)
    Dim files, file
    Set files = CreateObject("Scripting.FileSystemObject")
    Set file = files.CreateTextFile(App.Path & "\" & name)
    file.Close
End Sub

Public Function Heard(name)
    Dim files
    Set files = CreateObject("Scripting.FileSystemObject")
    Heard = files.FileExists(App.Path & "\" & name)
End Function
