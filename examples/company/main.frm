VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmMain 
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
   Caption         =   "ê¬ótè§éñ - îÃîÑä«óù"
   ClientHeight    =   6450
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   9300
   LinkTopic       =   "frmMain"
   MaxButton       =   0   'False
   ScaleHeight     =   6450
   ScaleWidth      =   9300
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   -1  'True
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   8640
      Top             =   5760
   End
   Begin VB.Label lblTitle 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   18
         Charset         =   128
         Weight          =   700
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "îÃîÑä«óù"
      ForeColor       =   &H00804000&
      Height          =   450
      Left            =   240
      TabIndex        =   0
      Top             =   180
      Width           =   6000
   End
   Begin VB.Label lblCompany 
      Alignment       =   1
      Caption         =   "äîéÆâÔé– ê¬ótè§éñ"
      Height          =   270
      Left            =   6060
      TabIndex        =   1
      Top             =   330
      Width           =   3000
   End
   Begin VB.Frame fraWork 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ã∆ñ±"
      Height          =   4830
      Left            =   240
      TabIndex        =   2
      Top             =   750
      Width           =   3000
      Begin VB.CommandButton cmdCustomers 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "ìæà”êÊÉJÅ[Éh(&K)"
         Height          =   570
         Left            =   210
         TabIndex        =   3
         Top             =   360
         Width           =   2580
      End
      Begin VB.CommandButton cmdLookup 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "ìæà”êÊÇÃåüçı(&F)"
         Height          =   570
         Left            =   210
         TabIndex        =   4
         Top             =   1080
         Width           =   2580
      End
      Begin VB.CommandButton cmdProducts 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "è§ïi(&P)"
         Height          =   570
         Left            =   210
         TabIndex        =   5
         Top             =   1800
         Width           =   2580
      End
      Begin VB.CommandButton cmdOrders 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "éÛíç(&O)"
         Height          =   570
         Left            =   210
         TabIndex        =   6
         Top             =   2520
         Width           =   2580
      End
      Begin VB.CommandButton cmdWalk 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "ìæà”êÊÇÃàÍóó(&L)"
         Height          =   570
         Left            =   210
         TabIndex        =   7
         Top             =   3240
         Width           =   2580
      End
      Begin VB.CommandButton cmdEnd 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         Caption         =   "èIóπ(&X)"
         Height          =   450
         Left            =   210
         TabIndex        =   8
         Top             =   4170
         Width           =   2580
      End
   End
   Begin VB.Frame fraPeople 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ïîñÂÇ∆é–àı"
      Height          =   3510
      Left            =   3390
      TabIndex        =   9
      Top             =   750
      Width           =   5670
      Begin VB.Label lblDepartments 
         Caption         =   "ïîñÂ(&D)"
         Height          =   255
         Left            =   210
         TabIndex        =   10
         Top             =   360
         Width           =   2250
      End
      Begin QRNBTRLib.QRNListBox lstDepartments 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3969
         _ExtentY        =   4763
         _Version        =   65537
         DbListField     =   "Name"
         DbListIndex     =   "ByDept"
         DbListSource    =   "dbCompany"
         DbListTable     =   "Departments"
         DbUpdateOption  =   1
         Height          =   2700
         Left            =   210
         TabIndex        =   11
         Top             =   630
         Width           =   2250
      End
      Begin VB.Label lblDeptPhone 
         Caption         =   "ìdòb"
         Height          =   255
         Left            =   2670
         TabIndex        =   12
         Top             =   690
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtDeptPhone 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3122
         _ExtentY        =   609
         _Version        =   65537
         DbField         =   "Phone"
         DbSource        =   "dbCompany"
         DbTable         =   "Departments"
         Height          =   345
         Left            =   3660
         ReadOnly        =   -1  'True
         TabIndex        =   13
         TabStop         =   0   'False
         Top             =   630
         Width           =   1770
      End
      Begin VB.Label lblBudget 
         Caption         =   "ó\éZ"
         Height          =   255
         Left            =   2670
         TabIndex        =   14
         Top             =   1140
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtBudget 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3122
         _ExtentY        =   609
         _Version        =   65537
         Alignment       =   1
         DbField         =   "Budget"
         DbSource        =   "dbCompany"
         DbTable         =   "Departments"
         Format          =   "#,##0"
         Height          =   345
         Left            =   3660
         ReadOnly        =   -1  'True
         TabIndex        =   15
         TabStop         =   0   'False
         Top             =   1080
         Width           =   1770
      End
      Begin VB.Label lblStaff 
         Caption         =   "é–àı(&S)"
         Height          =   255
         Left            =   2670
         TabIndex        =   16
         Top             =   1665
         Width           =   900
      End
      Begin QRNBTRLib.QRNExComboBox cboStaff 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3440
         _ExtentY        =   609
         _Version        =   65537
         DbDelimitChar   =   "  "
         DbListField     =   "StaffNo,Name"
         DbListIndex     =   "ByStaff"
         DbListSource    =   "dbCompany"
         DbListTable     =   "Staff"
         DbSkipRecords   =   -1
         DbUpdateOption  =   0
         Height          =   345
         Left            =   3660
         Style           =   2
         TabIndex        =   17
         Top             =   1605
         Width           =   1950
      End
      Begin VB.Label lblStaffKana 
         Caption         =   "ÉJÉi"
         Height          =   255
         Left            =   2670
         TabIndex        =   18
         Top             =   2115
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtStaffKana 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3440
         _ExtentY        =   609
         _Version        =   65537
         DbField         =   "Kana"
         DbSource        =   "dbCompany"
         DbTable         =   "Staff"
         Height          =   345
         Left            =   3660
         ReadOnly        =   -1  'True
         TabIndex        =   19
         TabStop         =   0   'False
         Top             =   2055
         Width           =   1950
      End
      Begin VB.Label lblJoined 
         Caption         =   "ì¸é–"
         Height          =   255
         Left            =   2670
         TabIndex        =   20
         Top             =   2565
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtJoined 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2381
         _ExtentY        =   609
         _Version        =   65537
         DbField         =   "Joined"
         DbSource        =   "dbCompany"
         DbTable         =   "Staff"
         Height          =   345
         Left            =   3660
         ReadOnly        =   -1  'True
         TabIndex        =   21
         TabStop         =   0   'False
         Top             =   2505
         Width           =   1350
      End
      Begin QRNBTRLib.QRNCheck chkActive 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2910
         _ExtentY        =   556
         _Version        =   65537
         Caption         =   "ç›ê–"
         DbField         =   "Active"
         DbSource        =   "dbCompany"
         DbTable         =   "Staff"
         Enabled         =   0   'False
         Height          =   315
         Left            =   3660
         TabIndex        =   22
         TabStop         =   0   'False
         Top             =   2970
         Width           =   1650
      End
   End
   Begin VB.Frame fraFigures 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìoò^åèêî"
      Height          =   1140
      Left            =   3390
      TabIndex        =   23
      Top             =   4440
      Width           =   5670
      Begin VB.Label lblCustomers 
         Caption         =   "ìæà”êÊ"
         Height          =   255
         Left            =   210
         TabIndex        =   24
         Top             =   420
         Width           =   900
      End
      Begin VB.Label lblNumOfCustomers 
         Alignment       =   1
         Caption         =   ""
         Height          =   255
         Left            =   1050
         TabIndex        =   25
         Top             =   420
         Width           =   780
      End
      Begin VB.Label lblProducts 
         Caption         =   "è§ïi"
         Height          =   255
         Left            =   2040
         TabIndex        =   26
         Top             =   420
         Width           =   900
      End
      Begin VB.Label lblNumOfProducts 
         Alignment       =   1
         Caption         =   ""
         Height          =   255
         Left            =   2880
         TabIndex        =   27
         Top             =   420
         Width           =   780
      End
      Begin VB.Label lblOrders 
         Caption         =   "éÛíç"
         Height          =   255
         Left            =   3870
         TabIndex        =   28
         Top             =   420
         Width           =   900
      End
      Begin VB.Label lblNumOfOrders 
         Alignment       =   1
         Caption         =   ""
         Height          =   255
         Left            =   4710
         TabIndex        =   29
         Top             =   420
         Width           =   780
      End
   End
   Begin VB.Label lblStatus 
      BackColor       =   &H80000018&
      BorderStyle     =   1
      Caption         =   ""
      ForeColor       =   &H80000017&
      Height          =   330
      Left            =   240
      TabIndex        =   30
      Top             =   5820
      UseMnemonic     =   0   'False
      Width           =   8250
   End
End
Attribute VB_Name = "frmMain"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' Where the day begins: the company's forms by a button each, and who works where.

Private Const opGetEqual = 5
Private Const codeWidth = 4

Private Sub Form_Load()
    ShowFigures
    If lstDepartments.ListCount = 0 Then Exit Sub
    lstDepartments.ListIndex = 0
    ShowDepartment
End Sub

' --- the forms, one at a time: what one writes, the next one reads

Private Sub cmdCustomers_Click()
    Work frmCustomers
End Sub

Private Sub cmdLookup_Click()
    Work frmLookup
End Sub

Private Sub cmdProducts_Click()
    Work frmProducts
End Sub

Private Sub cmdOrders_Click()
    Work frmOrders
End Sub

Private Sub cmdWalk_Click()
    Work frmWalk
End Sub

Private Sub Work(form As Object)
    form.Show vbModal
    ShowFigures
End Sub

Private Sub cmdEnd_Click()
    Unload Me
End Sub

Private Sub ShowFigures()
    lblNumOfCustomers.Caption = NumberOf("Customers")
    lblNumOfProducts.Caption = NumberOf("Products")
    lblNumOfOrders.Caption = NumberOf("Orders")
End Sub

Private Function NumberOf(table As String) As String
    Dim records As Long
    If dbCompany.DbGetNumOfRecords(table, records) = 0 Then NumberOf = Format(records, "#,##0")
End Function

' --- departments and their staff

' A line begins with the department's code, which is what the staff know.
Private Sub lstDepartments_Format(LineData As String)
    LineData = dbCompany.DbGetFieldData("Departments", "DeptCode") & " " & Trim(LineData)
End Sub

Private Sub lstDepartments_Click()
    ShowDepartment
End Sub

Private Sub ShowDepartment()
    Dim code As String
    code = Left(lstDepartments.Text, codeWidth)
    dbCompany.DbSetFieldData "Departments", "DeptCode", code
    If dbCompany.DbAccess(opGetEqual, "Departments", "ByDept") <> 0 Then Exit Sub
    dbCompany.DbTransferToControl "Departments"
    cboStaff.DbConditions = "@DeptCode = '" & code & "'"
    cboStaff.Refresh
    If cboStaff.ListCount > 0 Then cboStaff.ListIndex = 0
    ShowStaff
    lblStatus.Caption = lstDepartments.Text & " - é–àı " & cboStaff.ListCount & " êl"
End Sub

Private Sub cboStaff_Click()
    ShowStaff
End Sub

Private Sub ShowStaff()
    If cboStaff.ListIndex < 0 Then
        dbCompany.DbClearControlData "Staff"
        Exit Sub
    End If
    dbCompany.DbSetFieldData "Staff", "StaffNo", CStr(Val(cboStaff.Text))
    If dbCompany.DbAccess(opGetEqual, "Staff", "ByStaff") = 0 Then dbCompany.DbTransferToControl "Staff"
End Sub
