VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmProducts 
   BorderStyle     =   1
   Caption         =   "è§ïi"
   ClientHeight    =   4200
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   8400
   LinkTopic       =   "frmProducts"
   MaxButton       =   0   'False
   ScaleHeight     =   4200
   ScaleWidth      =   8400
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   0   'False
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   7200
      Top             =   3600
   End
   Begin VB.Label lblCode 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "è§ïiÉRÅ[Éh(&N)"
      Height          =   285
      Left            =   180
      TabIndex        =   0
      Top             =   225
      Width           =   1300
   End
   Begin QRNBTRLib.QRNEdit edtCode 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2293
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "ProductCode"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   1560
      TabIndex        =   1
      Top             =   150
      Width           =   1300
   End
   Begin VB.Label lblName 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "è§ïiñº"
      Height          =   285
      Left            =   180
      TabIndex        =   2
      Top             =   675
      Width           =   1300
   End
   Begin QRNBTRLib.QRNEdit edtName 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   7408
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Name"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   1560
      MaxLength       =   40
      TabIndex        =   3
      Top             =   600
      Width           =   4200
   End
   Begin VB.Label lblKana 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ÉàÉ~"
      Height          =   285
      Left            =   180
      TabIndex        =   4
      Top             =   1125
      Width           =   1300
   End
   Begin QRNBTRLib.QRNEdit edtKana 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   7408
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Kana"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   1560
      MaxLength       =   48
      TabIndex        =   5
      Top             =   1050
      Width           =   4200
   End
   Begin VB.Label lblPrice 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "íPâø"
      Height          =   285
      Left            =   180
      TabIndex        =   6
      Top             =   1575
      Width           =   1300
   End
   Begin QRNBTRLib.QRNEdit edtPrice 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2293
      _ExtentY        =   609
      _Version        =   65537
      Alignment       =   1
      DbField         =   "Price"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   1560
      TabIndex        =   7
      Top             =   1500
      Width           =   1300
   End
   Begin VB.Label lblCategory 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ï™óﬁ"
      Height          =   285
      Left            =   3200
      TabIndex        =   8
      Top             =   1575
      Width           =   600
   End
   Begin QRNBTRLib.QRNEdit edtCategory 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1235
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "CategoryNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   3840
      TabIndex        =   9
      Top             =   1500
      Width           =   700
   End
   Begin VB.Label lblTax 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ê≈ó¶"
      Height          =   285
      Left            =   180
      TabIndex        =   10
      Top             =   2025
      Width           =   1300
   End
   Begin QRNBTRLib.QRNOptBtn optTax8 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1588
      _ExtentY        =   609
      _Version        =   65537
      Caption         =   "8 %"
      DbField         =   "TaxPercent"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      DbValueFalse    =   "10.00"
      DbValueTrue     =   "8.00"
      Height          =   345
      Left            =   1560
      TabIndex        =   11
      Top             =   1950
      Width           =   900
   End
   Begin QRNBTRLib.QRNOptBtn optTax10 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1588
      _ExtentY        =   609
      _Version        =   65537
      Caption         =   "10 %"
      DbField         =   "TaxPercent"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      DbValueFalse    =   "8.00"
      DbValueTrue     =   "10.00"
      Height          =   345
      Left            =   2520
      TabIndex        =   12
      Top             =   1950
      Width           =   900
   End
   Begin QRNBTRLib.QRNCheck chkDiscontinued 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2646
      _ExtentY        =   609
      _Version        =   65537
      Caption         =   "éÊàµíÜé~"
      DbField         =   "Discontinued"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   3840
      TabIndex        =   13
      Top             =   1950
      Width           =   1500
   End
   Begin QRNBTRLib.QRNPic picProduct 
      _ExtentX        =   2646
      _ExtentY        =   2646
      _Version        =   65537
      BlobPath        =   "pictures"
      DbField         =   "Picture"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   1500
      Left            =   6000
      Stretch         =   -1  'True
      Top             =   150
      Width           =   1500
   End
   Begin QRNBTRLib.QRNHScroll scrPrice 
      _ExtentX        =   9842
      _ExtentY        =   609
      _Version        =   65537
      DbIndex         =   "ByPrice"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      LargeChange     =   10
      Left            =   180
      TabIndex        =   14
      Top             =   2700
      Width           =   5580
   End
   Begin QRNBTRLib.QRNVScroll scrName 
      _ExtentX        =   609
      _ExtentY        =   5821
      _Version        =   65537
      DbIndex         =   "ByProductName"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   3300
      LargeChange     =   10
      Left            =   7800
      TabIndex        =   15
      Top             =   150
      Width           =   345
   End
   Begin QRNBTRLib.QRNBtn btnFind 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2293
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "åüçı(&F)"
      ClearControlData =   0   'False
      DbIndex         =   "ByProduct"
      DbOperation     =   3
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   420
      Left            =   180
      TabIndex        =   16
      Top             =   3300
      Width           =   1300
   End
   Begin QRNBTRLib.QRNBtn btnNext 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2293
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "éüÇ÷(&X)"
      ClearControlData =   0   'False
      DbIndex         =   "ByProductName"
      DbOperation     =   6
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   420
      Left            =   1620
      TabIndex        =   17
      Top             =   3300
      Width           =   1300
   End
   Begin QRNBTRLib.QRNBtn btnUpdate 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2293
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "çXêV(&U)"
      ClearControlData =   0   'False
      DbIndex         =   "ByProduct"
      DbOperation     =   1
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   420
      Left            =   3060
      TabIndex        =   18
      Top             =   3300
      Width           =   1300
   End
   Begin VB.Label lblStatus 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   ""
      Height          =   285
      Left            =   180
      TabIndex        =   19
      Top             =   3840
      Width           =   7000
   End
End
Attribute VB_Name = "frmProducts"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private Const statusEndOfFile = 9

' The user's last word on the two fields whose controls do not store what was clicked.
Private tax As String
Private discontinued As String

Private Sub Forget()
    tax = ""
    discontinued = ""
End Sub

Private Sub optTax8_Click()
    tax = "8"
End Sub

Private Sub optTax10_Click()
    tax = "10"
End Sub

Private Sub chkDiscontinued_Click()
    discontinued = IIf(chkDiscontinued.Value, "1", "0")
End Sub

Private Sub btnUpdate_SetData()
    If tax <> "" Then dbCompany.DbSetFieldData "Products", "TaxPercent", tax
    If discontinued <> "" Then dbCompany.DbSetFieldData "Products", "Discontinued", discontinued
End Sub

Private Sub btnUpdate_Click()
    Forget
    dbCompany.DbTransferToControl "Products"
End Sub

Private Sub btnFind_Click()
    Forget
End Sub

Private Sub btnNext_Click()
    Forget
End Sub

Private Sub scrName_Change()
    Forget
    lblStatus.Caption = "è§ïiñºèá " & Format(scrName.Value / 100, "0.0") & " %"
End Sub

Private Sub scrName_Scroll()
    scrName_Change
End Sub

Private Sub scrPrice_Change()
    Forget
    lblStatus.Caption = "íPâøèá " & Format(scrPrice.Value / 100, "0.0") & " %"
End Sub

Private Sub scrPrice_Scroll()
    scrPrice_Change
End Sub

Private Sub scrName_BtrieveError(TableName As String, Status As Integer)
    TellEnd Status
End Sub

Private Sub scrPrice_BtrieveError(TableName As String, Status As Integer)
    TellEnd Status
End Sub

Private Sub btnNext_BtrieveError(TableName As String, Status As Integer)
    TellEnd Status
End Sub

Private Sub btnFind_BtrieveError(TableName As String, Status As Integer)
    lblStatus.Caption = "è§ïiÇ™Ç†ÇËÇ‹ÇπÇÒÅB"
    Status = 0
End Sub

Private Sub TellEnd(Status As Integer)
    If Status <> statusEndOfFile Then Exit Sub
    lblStatus.Caption = "Ç±ÇÍÇÊÇËêÊÇ…è§ïiÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
    Status = 0
End Sub
