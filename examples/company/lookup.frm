VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmLookup 
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
   Caption         =   "ìæà”êÊåüçı"
   ClientHeight    =   6150
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   11100
   LinkTopic       =   "frmLookup"
   MaxButton       =   0   'False
   ScaleHeight     =   6150
   ScaleWidth      =   11100
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   -1  'True
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   10560
      Top             =   120
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
      Caption         =   "ÉàÉ~(&Y)"
      Height          =   285
      Left            =   180
      TabIndex        =   0
      Top             =   225
      Width           =   800
   End
   Begin VB.TextBox txtKana 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   345
      Left            =   1020
      TabIndex        =   1
      Text            =   ""
      Top             =   150
      Width           =   3000
   End
   Begin VB.Label lblCount 
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
      Left            =   4200
      TabIndex        =   2
      Top             =   195
      Width           =   1700
   End
   Begin VB.Label lblList 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìæà”êÊ(&L)"
      Height          =   285
      Left            =   180
      TabIndex        =   3
      Top             =   645
      Width           =   1200
   End
   Begin QRNBTRLib.QRNExListBox lstCustomers 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   10231
      _ExtentY        =   7408
      _Version        =   65537
      DbListField     =   "CustomerNo,Name,Prefecture"
      DbListIndex     =   "ByKana"
      DbListSource    =   "dbCompany"
      DbListTable     =   "Customers"
      DbMaxRecords    =   300
      DbSavePosition  =   -1  'True
      DbSkipRecords   =   -1
      DbTabStops      =   "1"
      DbUpdateOption  =   1
      Height          =   4200
      Left            =   180
      TabIndex        =   4
      Top             =   930
      Width           =   5800
   End
   Begin VB.Label lblCustomerNo 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìæà”êÊî‘çÜ"
      Height          =   285
      Left            =   6240
      TabIndex        =   5
      Top             =   645
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtCustomerNo 
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
      DbField         =   "CustomerNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   345
      Left            =   7440
      ReadOnly        =   -1  'True
      TabIndex        =   6
      Top             =   600
      Width           =   900
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
      Caption         =   "ñºèÃ"
      Height          =   285
      Left            =   6240
      TabIndex        =   7
      Top             =   1045
      Width           =   1100
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
      _ExtentX        =   5644
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Name"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   345
      Left            =   7440
      TabIndex        =   8
      Top             =   1000
      Width           =   3200
   End
   Begin VB.Label lblPrefecture 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìsìπï{åß"
      Height          =   285
      Left            =   6240
      TabIndex        =   9
      Top             =   1445
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtPrefecture 
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
      DbField         =   "Prefecture"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   345
      Left            =   7440
      TabIndex        =   10
      Top             =   1400
      Width           =   1300
   End
   Begin VB.Label lblPhone 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìdòbî‘çÜ"
      Height          =   285
      Left            =   6240
      TabIndex        =   11
      Top             =   1845
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtPhone 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   3351
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Phone"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   345
      Left            =   7440
      TabIndex        =   12
      Top             =   1800
      Width           =   1900
   End
   Begin VB.Label lblStaffNo 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "íSìñé“î‘çÜ"
      Height          =   285
      Left            =   6240
      TabIndex        =   13
      Top             =   2445
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtStaffNo 
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
      DbField         =   "StaffNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Staff"
      Height          =   345
      Left            =   7440
      ReadOnly        =   -1  'True
      TabIndex        =   14
      Top             =   2400
      Width           =   900
   End
   Begin VB.Label lblStaffName 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "íSìñé“"
      Height          =   285
      Left            =   6240
      TabIndex        =   15
      Top             =   2845
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtStaffName 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   3881
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Name"
      DbSource        =   "dbCompany"
      DbTable         =   "Staff"
      Height          =   345
      Left            =   7440
      ReadOnly        =   -1  'True
      TabIndex        =   16
      Top             =   2800
      Width           =   2200
   End
   Begin VB.Label lblDept 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ïîñÂ(&D)"
      Height          =   285
      Left            =   6240
      TabIndex        =   17
      Top             =   3245
      Width           =   1100
   End
   Begin QRNBTRLib.QRNComboBox cboDept 
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
      DbField         =   "DeptCode"
      DbListField     =   "DeptCode"
      DbListIndex     =   "ByDept"
      DbListSource    =   "dbCompany"
      DbListTable     =   "Departments"
      DbSource        =   "dbCompany"
      DbTable         =   "Staff"
      DbUpdateOption  =   1
      Height          =   345
      Left            =   7440
      Style           =   2
      TabIndex        =   18
      Top             =   3200
      Width           =   1300
   End
   Begin VB.Label lblDeptName 
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
      Left            =   8840
      TabIndex        =   19
      Top             =   3245
      Width           =   2000
   End
   Begin QRNBTRLib.QRNBtn btnStaff 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2999
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "íSìñé“ÇçXêV(&S)"
      ClearControlData =   0   'False
      DbIndex         =   "ByStaff"
      DbOperation     =   1
      DbSource        =   "dbCompany"
      DbTable         =   "Staff"
      Height          =   420
      Left            =   7440
      TabIndex        =   20
      Top             =   3620
      Width           =   1700
   End
   Begin VB.Label lblProductCode 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "è§ïiÉRÅ[Éh"
      Height          =   285
      Left            =   6240
      TabIndex        =   21
      Top             =   4285
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtProductCode 
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
      Left            =   7440
      TabIndex        =   22
      Top             =   4240
      Width           =   1300
   End
   Begin QRNBTRLib.QRNBtn btnProduct 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "åüçı(&F)"
      DbIndex         =   "ByProduct"
      DbOperation     =   3
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   420
      Left            =   8840
      TabIndex        =   23
      Top             =   4210
      Width           =   1100
   End
   Begin VB.Label lblProductName 
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
      Left            =   6240
      TabIndex        =   24
      Top             =   4735
      Width           =   1100
   End
   Begin QRNBTRLib.QRNEdit edtProductName 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   5644
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Name"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   345
      Left            =   7440
      ReadOnly        =   -1  'True
      TabIndex        =   25
      Top             =   4690
      Width           =   3200
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
      Caption         =   "ï™óﬁ(&C)"
      Height          =   285
      Left            =   6240
      TabIndex        =   26
      Top             =   5135
      Width           =   1100
   End
   Begin QRNBTRLib.QRNComboBox cboCategory 
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
      DbField         =   "CategoryNo"
      DbListField     =   "CategoryNo"
      DbListIndex     =   "ByCategory"
      DbListSource    =   "dbCompany"
      DbListTable     =   "Categories"
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      DbUpdateOption  =   1
      Height          =   345
      Left            =   7440
      Style           =   2
      TabIndex        =   27
      Top             =   5090
      Width           =   900
   End
   Begin VB.Label lblCategoryName 
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
      Left            =   8440
      TabIndex        =   28
      Top             =   5135
      Width           =   2000
   End
   Begin QRNBTRLib.QRNBtn btnProductUpdate 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2999
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "è§ïiÇçXêV(&P)"
      ClearControlData =   0   'False
      DbIndex         =   "ByProduct"
      DbOperation     =   1
      DbSource        =   "dbCompany"
      DbTable         =   "Products"
      Height          =   420
      Left            =   7440
      TabIndex        =   29
      Top             =   5510
      Width           =   1700
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
      TabIndex        =   30
      Top             =   5600
      Width           =   5800
   End
End
Attribute VB_Name = "frmLookup"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' Lists do the looking up: what is typed narrows the customers, choosing one shows its card and the
' member of staff who looks after it. The combos write the chosen code into the record.

Private Const opGetEqual = 5
Private Const afterAllKana = "ÉñÉñÉñÉñ"    ' behind every reading that begins alike

Private Sub Form_Load()
    CountList
End Sub

Private Sub txtKana_Change()
    Dim letters As String
    letters = Replace(txtKana.Text, "'", "")
    lstCustomers.DbConditions = ""
    If letters <> "" Then lstCustomers.DbConditions = "@Kana >= '" & letters & "' & @Kana <= '" & letters & afterAllKana & "'"
    lstCustomers.Refresh
    CountList
End Sub

Private Sub CountList()
    lblCount.Caption = lstCustomers.ListCount & " åè"
End Sub

' Each line keeps the position of its record, by which the record is read again.
Private Sub lstCustomers_Click()
    If lstCustomers.ListIndex < 0 Then Exit Sub
    If dbCompany.DbGetDirect("Customers", lstCustomers.ItemData(lstCustomers.ListIndex), "ByKana") <> 0 Then
        lblStatus.Caption = "Ç±ÇÃìæà”êÊÇÕÇ‡Ç§Ç†ÇËÇ‹ÇπÇÒÅB"
        Exit Sub
    End If
    lblStatus.Caption = ""
    dbCompany.DbTransferToControl "Customers"
    ShowStaff dbCompany.DbGetFieldData("Customers", "StaffNo")
End Sub

Private Sub ShowStaff(number As String)
    dbCompany.DbSetFieldData "Staff", "StaffNo", number
    If dbCompany.DbAccess(opGetEqual, "Staff", "ByStaff") = 0 Then
        dbCompany.DbTransferToControl "Staff"
    Else
        dbCompany.DbClearControlData "Staff"
    End If
    NameDepartment
End Sub

' The names beside the codes.
Private Sub NameDepartment()
    lblDeptName.Caption = NameOf("Departments", "DeptCode", cboDept.Text, "ByDept")
End Sub

Private Sub NameCategory()
    lblCategoryName.Caption = NameOf("Categories", "CategoryNo", cboCategory.Text, "ByCategory")
End Sub

Private Function NameOf(table As String, field As String, code As String, index As String) As String
    NameOf = ""
    If code = "" Then Exit Function
    dbCompany.DbSetFieldData table, field, code
    If dbCompany.DbAccess(opGetEqual, table, index) = 0 Then NameOf = Trim(dbCompany.DbGetFieldData(table, "Name"))
End Function

Private Sub cboDept_Click()
    NameDepartment
End Sub

Private Sub cboCategory_Click()
    NameCategory
End Sub

Private Sub btnProduct_Click()
    NameCategory
End Sub

Private Sub btnProduct_BtrieveError(TableName As String, Status As Integer)
    lblStatus.Caption = "è§ïiÇ™Ç†ÇËÇ‹ÇπÇÒÅB"
    Status = 0
End Sub

Private Sub btnStaff_Click()
    lblStatus.Caption = "íSìñé“ÇÃïîñÂÇÕ " & Trim(dbCompany.DbGetFieldData("Staff", "DeptCode")) & " Ç≈Ç∑ÅB"
End Sub

Private Sub btnProductUpdate_Click()
    lblStatus.Caption = "è§ïiÇÃï™óﬁÇÕ " & Trim(dbCompany.DbGetFieldData("Products", "CategoryNo")) & " Ç≈Ç∑ÅB"
End Sub
