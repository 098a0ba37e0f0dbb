VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmPick 
   Caption         =   "pick"
   ClientHeight    =   2400
   ClientLeft      =   600
   ClientTop       =   600
   ClientWidth     =   4800
   StartUpPosition =   0
   Begin QRNBTRLib.QRNBtr dbCompany 
      DDFDir          =   "."
      Height          =   480
      Left            =   4200
      Top             =   1800
      Width           =   480
   End
   Begin VB.TextBox txtOther 
      Height          =   375
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   1500
   End
   Begin QRNBTRLib.QRNListBox lstPlain 
      DbListField     =   "DeptCode"
      DbListIndex     =   "ByDept"
      DbListSource    =   "dbCompany"
      DbListTable     =   "Departments"
      DbUpdateOption  =   2
      Height          =   1500
      Left            =   120
      TabIndex        =   1
      Top             =   600
      Width           =   1500
   End
   Begin QRNBTRLib.QRNExComboBox cboFields 
      DbListField     =   "DeptCode,Name"
      DbListIndex     =   "ByDept"
      DbListSource    =   "dbCompany"
      DbListTable     =   "Departments"
      DbUpdateOption  =   2
      Height          =   375
      Left            =   1800
      Style           =   2
      TabIndex        =   2
      Top             =   600
      Width           =   1800
   End
   Begin VB.Label lblTold 
      Height          =   375
      Left            =   1800
      Top             =   1200
      Width           =   2700
   End
End
Attribute VB_Name = "frmPick"
Private Const opInsert = 2
Private Const opDelete = 4
Private Const opGetEqual = 5

Public Sub Add()
    dbCompany.DbSetFieldData "Departments", "DeptCode", "M500"
    dbCompany.DbSetFieldData "Departments", "Name", "new"
    If dbCompany.DbAccess(opInsert, "Departments", "ByDept") <> 0 Then lblTold.Caption = "not inserted"
End Sub

Public Sub Remove()
    dbCompany.DbSetFieldData "Departments", "DeptCode", "M500"
    If dbCompany.DbAccess(opGetEqual, "Departments", "ByDept") <> 0 Then lblTold.Caption = "not found"
    If dbCompany.DbAccess(opDelete, "Departments", "ByDept") <> 0 Then lblTold.Caption = "not deleted"
End Sub

Private Sub cboFields_BtrieveError(TableName As String, Status As Integer)
    lblTold.Caption = "status " & Status
End Sub
