Set Log = CreateObject("CVLog3.CVLog")
If Log.OpenDB(Workspace) Then       ' Workspace is the host's own object
    Log.Add "verify", 0, "O1", ""   ' method, return code, object, message
    Log.Add "verify", 1, "O1", "2 warnings", "parser_c.errors"
    Log.CloseDB
End If
