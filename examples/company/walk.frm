VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmWalk 
   BeginProperty Font 
      Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
      Size            =   9.75
      Charset         =   128
      Weight          =   400
      Underline       =   0   'False
      Italic          =   0   'False
      Strikethrough   =   0   'False
   EndProperty
   BorderStyle     =   1
   Caption         =   "ìæà”êÊàÍóó"
   ClientHeight    =   4560
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   7260
   LinkTopic       =   "frmWalk"
   MaxButton       =   0   'False
   ScaleHeight     =   4560
   ScaleWidth      =   7260
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   0   'False
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   6600
      Top             =   120
   End
   Begin VB.TextBox txtList 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   3600
      Left            =   180
      Locked          =   -1  'True
      MultiLine       =   -1  'True
      ScrollBars      =   2
      TabIndex        =   0
      Text            =   ""
      Top             =   780
      Width           =   6900
   End
   Begin VB.Label lblCount 
      Caption         =   ""
      Height          =   300
      Left            =   1860
      TabIndex        =   2
      Top             =   270
      Width           =   2900
   End
   Begin VB.CommandButton cmdClose 
      Cancel          =   -1  'True
      Caption         =   "ï¬Ç∂ÇÈ(&C)"
      Height          =   420
      Left            =   4860
      TabIndex        =   3
      Top             =   180
      Width           =   1380
   End
   Begin VB.CommandButton cmdWalk 
      Caption         =   "àÍóó(&W)"
      Default         =   -1  'True
      Height          =   420
      Left            =   180
      TabIndex        =   1
      Top             =   180
      Width           =   1500
   End
End
Attribute VB_Name = "frmWalk"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private Const opGetNext = 6
Private Const opGetFirst = 12
Private Const statusEndOfFile = 9

Private Sub cmdWalk_Click()
    Dim rc As Integer
    Dim found As Long
    Dim lines As String

    rc = dbCompany.DbOpen("Customers")
    If rc <> 0 Then
        lblCount.Caption = "äJÇØÇ‹ÇπÇÒ (" & rc & ")"
        Exit Sub
    End If
    rc = dbCompany.DbAccess(opGetFirst, "Customers", "ByKana")
    Do While rc = 0
        found = found + 1
        lines = lines & Customer() & vbCrLf
        dbCompany.DbAccess opGetNext, "Customers", "ByKana", rc
    Loop
    If rc <> statusEndOfFile Then lines = lines & "èÛë‘ " & rc & vbCrLf
    txtList.Text = lines
    lblCount.Caption = found & " åè"
    rc = dbCompany.DbClose("Customers")
End Sub

Private Sub cmdClose_Click()
    Unload Me
End Sub

Private Function Customer() As String
    Customer = Right("    " & dbCompany.DbGetFieldData("Customers", "CustomerNo"), 5) & "  " & _
        dbCompany.DbGetFieldData("Customers", "Name") & "  " & _
        dbCompany.DbGetFieldData("Customers", "Prefecture")
End Function

Private Sub dbCompany_BtrieveError(TableName As String, Status As Integer)
    lblCount.Caption = TableName & ": èÛë‘ " & Status
    Status = 0
End Sub
