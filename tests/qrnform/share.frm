VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmShare 
   Caption         =   "share"
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
   Begin QRNBTRLib.QRNEdit edtNo 
      DbField         =   "CustomerNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   375
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   1500
   End
   Begin QRNBTRLib.QRNEdit edtPhone 
      DbField         =   "Phone"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   375
      Left            =   120
      TabIndex        =   1
      Top             =   600
      Width           =   3000
   End
   Begin QRNBTRLib.QRNBtn btnFind 
      Caption         =   "find"
      DbIndex         =   "ByCustomer"
      DbLocks         =   2
      DbOperation     =   3
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   120
      TabIndex        =   2
      Top             =   1200
      Width           =   1200
   End
   Begin QRNBTRLib.QRNBtn btnUpdate 
      Caption         =   "update"
      ClearControlData=   0   'False
      DbIndex         =   "ByCustomer"
      DbOperation     =   1
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   1440
      TabIndex        =   3
      Top             =   1200
      Width           =   1200
   End
End
Attribute VB_Name = "frmShare"
