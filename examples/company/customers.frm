VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmCustomers 
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
   Caption         =   "ìæà”êÊÉJÅ[Éh - ê¬ótè§éñ"
   ClientHeight    =   7500
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   9540
   LinkTopic       =   "frmCustomers"
   MaxButton       =   0   'False
   ScaleHeight     =   7500
   ScaleWidth      =   9540
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   -1  'True
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   4560
      Top             =   180
   End
   Begin VB.Frame fraVisit 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ñKñ‚ãLò^"
      Height          =   2220
      Left            =   4260
      TabIndex        =   62
      Top             =   4680
      Width           =   5100
      Begin QRNBTRLib.QRNEdit edtVisitCustomer 
         _ExtentX        =   1058
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "ìæà”êÊî‘çÜ"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         Left            =   3000
         ReadOnly        =   -1  'True
         TabIndex        =   67
         Top             =   1665
         Visible         =   0   'False
         Width           =   600
      End
      Begin QRNBTRLib.QRNEdit edtNote 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   8255
         _ExtentY        =   1588
         _Version        =   65537
         DbField         =   "ì‡óe"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   900
         IMEMode         =   4
         Left            =   180
         MultiLine       =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   61
         Top             =   1185
         Width           =   4680
      End
      Begin QRNBTRLib.QRNBtn btnVisitNext 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   741
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ÅÑ"
         DbIndex         =   "ìæà”êÊï "
         DbOperation     =   7
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         Left            =   4440
         TabIndex        =   60
         Top             =   765
         Width           =   420
      End
      Begin QRNBTRLib.QRNBtn btnVisitPrevious 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   741
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ÅÉ"
         DbIndex         =   "ìæà”êÊï "
         DbOperation     =   6
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         Left            =   4020
         TabIndex        =   59
         Top             =   765
         Width           =   420
      End
      Begin QRNBTRLib.QRNBtn btnVisitFirst 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1005
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ç≈êV"
         DbIndex         =   "ìæà”êÊï "
         DbOperation     =   10
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         Left            =   3450
         TabIndex        =   58
         Top             =   765
         Width           =   570
      End
      Begin QRNBTRLib.QRNEdit edtMatter 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3916
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "ópåè"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         IMEMode         =   4
         Left            =   1170
         MaxLength       =   20
         ReadOnly        =   -1  'True
         TabIndex        =   57
         Top             =   765
         Width           =   2220
      End
      Begin VB.Label lblMatter 
         Caption         =   "ópåè"
         Height          =   270
         Left            =   180
         TabIndex        =   56
         Top             =   840
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtVisitDate 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "ñKñ‚ì˙"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         IMEMode         =   2
         Left            =   3060
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   55
         Top             =   315
         Width           =   1530
      End
      Begin VB.Label lblVisitDate 
         Caption         =   "ñKñ‚ì˙"
         Height          =   270
         Left            =   2340
         TabIndex        =   54
         Top             =   390
         Width           =   700
      End
      Begin QRNBTRLib.QRNEdit edtVisitNo 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1764
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "ãLò^î‘çÜ"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   53
         Top             =   315
         Width           =   1000
      End
      Begin VB.Label lblVisitNo 
         Caption         =   "ãLò^î‘çÜ"
         Height          =   270
         Left            =   180
         TabIndex        =   52
         Top             =   390
         Width           =   900
      End
   End
   Begin VB.Frame fraOrder 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "éÛíç"
      Height          =   2220
      Left            =   180
      TabIndex        =   51
      Top             =   4680
      Width           =   3900
      Begin QRNBTRLib.QRNEdit edtOrderCustomer 
         _ExtentX        =   1058
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "CustomerNo"
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         Left            =   3000
         ReadOnly        =   -1  'True
         TabIndex        =   66
         Top             =   1665
         Visible         =   0   'False
         Width           =   600
      End
      Begin QRNBTRLib.QRNBtn btnOrderLast 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1535
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ç≈å„"
         DbIndex         =   "ByCustomerOrder"
         DbOperation     =   11
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         Left            =   2820
         TabIndex        =   50
         Top             =   1215
         Width           =   870
      End
      Begin QRNBTRLib.QRNBtn btnOrderFirst 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1535
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ç≈èâ"
         DbIndex         =   "ByCustomerOrder"
         DbOperation     =   10
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         Left            =   2820
         TabIndex        =   49
         Top             =   765
         Width           =   870
      End
      Begin QRNBTRLib.QRNBtn btnOrderNext 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   741
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ÅÑ"
         DbIndex         =   "ByCustomerOrder"
         DbOperation     =   6
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         Left            =   3270
         TabIndex        =   48
         Top             =   315
         Width           =   420
      End
      Begin QRNBTRLib.QRNBtn btnOrderPrevious 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   9.75
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   741
         _ExtentY        =   661
         _Version        =   65537
         Caption         =   "ÅÉ"
         DbIndex         =   "ByCustomerOrder"
         DbOperation     =   7
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         Left            =   2820
         TabIndex        =   47
         Top             =   315
         Width           =   420
      End
      Begin QRNBTRLib.QRNEdit edtTotal 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "Total"
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Format          =   "Åè#,##0"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   46
         Top             =   1665
         Width           =   1530
      End
      Begin VB.Label lblTotal 
         Caption         =   "çáåvã‡äz"
         Height          =   270
         Left            =   180
         TabIndex        =   45
         Top             =   1740
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtOrderTime 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "OrderTime"
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   44
         Top             =   1215
         Width           =   1530
      End
      Begin VB.Label lblOrderTime 
         Caption         =   "éûçè"
         Height          =   270
         Left            =   180
         TabIndex        =   43
         Top             =   1290
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtOrderDate 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "OrderDate"
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   42
         Top             =   765
         Width           =   1530
      End
      Begin VB.Label lblOrderDate 
         Caption         =   "éÛíçì˙"
         Height          =   270
         Left            =   180
         TabIndex        =   41
         Top             =   840
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtOrderNo 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "OrderNo"
         DbSource        =   "dbCompany"
         DbTable         =   "Orders"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         NumericMask     =   -1  'True
         ReadOnly        =   -1  'True
         TabIndex        =   40
         Top             =   315
         Width           =   1530
      End
      Begin VB.Label lblOrderNo 
         Caption         =   "éÛíçî‘çÜ"
         Height          =   270
         Left            =   180
         TabIndex        =   39
         Top             =   390
         Width           =   900
      End
   End
   Begin QRNBTRLib.QRNBtn btnDelete 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1826
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "çÌèú(&D)"
      ConfirmMsg      =   "Ç±ÇÃìæà”êÊÇçÌèúÇµÇ‹Ç∑ÅBÇÊÇÎÇµÇ¢Ç≈Ç∑Ç©ÅB"
      DbIndex         =   "ByCustomer"
      DbOperation     =   2
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   8310
      TabIndex        =   38
      Top             =   4110
      Width           =   1035
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
      _ExtentX        =   1826
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "çXêV(&U)"
      ClearControlData =   0   'False
      DbIndex         =   "ByCustomer"
      DbOperation     =   1
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   7185
      TabIndex        =   37
      Top             =   4110
      Width           =   1035
   End
   Begin QRNBTRLib.QRNBtn btnInsert 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1826
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "í«â¡(&I)"
      DbIndex         =   "ByCustomer"
      DbOperation     =   0
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   6060
      TabIndex        =   36
      Top             =   4110
      Width           =   1035
   End
   Begin QRNBTRLib.QRNBtn btnLast 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1879
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "ÅÑÅb"
      DbIndex         =   "ByCustomer"
      DbOperation     =   5
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   4680
      TabIndex        =   35
      Top             =   4110
      Width           =   1065
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
      _ExtentX        =   1879
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "éü(&X) ÅÑ"
      DbIndex         =   "ByCustomer"
      DbOperation     =   6
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   3555
      TabIndex        =   34
      Top             =   4110
      Width           =   1065
   End
   Begin QRNBTRLib.QRNBtn btnPrevious 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1879
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "ÅÉ ëO(&P)"
      DbIndex         =   "ByCustomer"
      DbOperation     =   7
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   2430
      TabIndex        =   33
      Top             =   4110
      Width           =   1065
   End
   Begin QRNBTRLib.QRNBtn btnFirst 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1879
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "ÅbÅÉ"
      DbIndex         =   "ByCustomer"
      DbOperation     =   4
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   1305
      TabIndex        =   32
      Top             =   4110
      Width           =   1065
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
      _ExtentX        =   1879
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "åüçı(&F)"
      DbIndex         =   "ByCustomer"
      DbOperation     =   3
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   420
      Left            =   180
      TabIndex        =   31
      Top             =   4110
      Width           =   1065
   End
   Begin VB.Frame fraCustomer 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Caption         =   "ìæà”êÊ"
      Height          =   3180
      Left            =   180
      TabIndex        =   30
      Top             =   780
      Width           =   9180
      Begin QRNBTRLib.QRNEdit edtEmail 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   8220
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Email"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   4260
         MaxLength       =   39
         TabIndex        =   29
         Top             =   2580
         Width           =   4660
      End
      Begin VB.Label lblEmail 
         Caption         =   "ÉÅÅ[Éã"
         Height          =   270
         Left            =   3480
         TabIndex        =   28
         Top             =   2655
         Width           =   700
      End
      Begin QRNBTRLib.QRNEdit edtPhone 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3528
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Phone"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         MaxLength       =   15
         NumericMask     =   -1  'True
         TabIndex        =   27
         Top             =   2580
         Width           =   2000
      End
      Begin VB.Label lblPhone 
         Caption         =   "ìdòb"
         Height          =   270
         Left            =   180
         TabIndex        =   26
         Top             =   2655
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtClosingDay 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1235
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "ClosingDay"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   6900
         MaxLength       =   2
         NumericMask     =   -1  'True
         TabIndex        =   25
         Top             =   2130
         Width           =   700
      End
      Begin VB.Label lblClosing 
         Caption         =   "í˜ì˙"
         Height          =   270
         Left            =   5760
         TabIndex        =   24
         Top             =   2205
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtAddress 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   7302
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Address"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   4
         Left            =   1170
         MaxLength       =   60
         TabIndex        =   23
         Top             =   2130
         Width           =   4140
      End
      Begin VB.Label lblAddress 
         Caption         =   "èZèä"
         Height          =   270
         Left            =   180
         TabIndex        =   22
         Top             =   2205
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtDiscount 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1764
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "Discount"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Format          =   "0.00"
         Height          =   375
         IMEMode         =   2
         Left            =   6900
         MaxLength       =   6
         NumericMask     =   -1  'True
         TabIndex        =   21
         Top             =   1680
         Width           =   1000
      End
      Begin VB.Label lblDiscount 
         Caption         =   "ílà¯ó¶ Åì"
         Height          =   270
         Left            =   5760
         TabIndex        =   20
         Top             =   1755
         Width           =   1000
      End
      Begin QRNBTRLib.QRNEdit edtPrefecture 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2381
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Prefecture"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   4
         Left            =   3960
         MaxLength       =   8
         TabIndex        =   19
         Top             =   1680
         Width           =   1350
      End
      Begin VB.Label lblPref 
         Caption         =   "ìsìπï{åß"
         Height          =   270
         Left            =   2700
         TabIndex        =   18
         Top             =   1755
         Width           =   1000
      End
      Begin QRNBTRLib.QRNEdit edtZip 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2117
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Zip"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         MaxLength       =   8
         NumericMask     =   -1  'True
         TabIndex        =   17
         Top             =   1680
         Width           =   1200
      End
      Begin VB.Label lblZip 
         Caption         =   "Åß"
         Height          =   270
         Left            =   180
         TabIndex        =   16
         Top             =   1755
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtBalance 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3563
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "Balance"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Format          =   "#,##0"
         Height          =   375
         IMEMode         =   2
         Left            =   6900
         MaxLength       =   15
         NumericMask     =   -1  'True
         TabIndex        =   15
         Top             =   1230
         Width           =   2020
      End
      Begin VB.Label lblBalance 
         Caption         =   "îÑä|écçÇ"
         Height          =   270
         Left            =   5760
         TabIndex        =   14
         Top             =   1305
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtKana 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   7302
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Kana"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   5
         Left            =   1170
         MaxLength       =   48
         TabIndex        =   13
         Top             =   1230
         Width           =   4140
      End
      Begin VB.Label lblKana 
         Caption         =   "ÉJÉi(&K)"
         Height          =   270
         Left            =   180
         TabIndex        =   12
         Top             =   1305
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtCreditLimit 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   3563
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "CreditLimit"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Format          =   "#,##0"
         Height          =   375
         IMEMode         =   2
         Left            =   6900
         MaxLength       =   14
         NumericMask     =   -1  'True
         TabIndex        =   11
         Top             =   780
         Width           =   2020
      End
      Begin VB.Label lblCredit 
         Caption         =   "ó^êMå¿ìx"
         Height          =   270
         Left            =   5760
         TabIndex        =   10
         Top             =   855
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtName 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   7302
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Name"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   4
         Left            =   1170
         MaxLength       =   40
         TabIndex        =   9
         Top             =   780
         Width           =   4140
      End
      Begin VB.Label lblName 
         Caption         =   "ñºèÃ(&A)"
         Height          =   270
         Left            =   180
         TabIndex        =   8
         Top             =   855
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtRank 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1235
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "Rank"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   8220
         MaxLength       =   1
         NumericMask     =   -1  'True
         TabIndex        =   7
         Top             =   330
         Width           =   700
      End
      Begin VB.Label lblRank 
         Caption         =   "ÉâÉìÉN"
         Height          =   270
         Left            =   7500
         TabIndex        =   6
         Top             =   405
         Width           =   700
      End
      Begin QRNBTRLib.QRNEdit edtStaffNo 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1411
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "StaffNo"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   6420
         MaxLength       =   5
         NumericMask     =   -1  'True
         TabIndex        =   5
         Top             =   330
         Width           =   800
      End
      Begin VB.Label lblStaff 
         Caption         =   "íSìñ"
         Height          =   270
         Left            =   5760
         TabIndex        =   4
         Top             =   405
         Width           =   600
      End
      Begin QRNBTRLib.QRNEdit edtSince 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   2699
         _ExtentY        =   661
         _Version        =   65537
         DbField         =   "Since"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   3960
         MaxLength       =   10
         NumericMask     =   -1  'True
         TabIndex        =   3
         Top             =   330
         Width           =   1530
      End
      Begin VB.Label lblSince 
         Caption         =   "éÊà¯äJén"
         Height          =   270
         Left            =   3000
         TabIndex        =   2
         Top             =   405
         Width           =   900
      End
      Begin QRNBTRLib.QRNEdit edtCustomerNo 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   1940
         _ExtentY        =   661
         _Version        =   65537
         Alignment       =   1
         DbField         =   "CustomerNo"
         DbSource        =   "dbCompany"
         DbTable         =   "Customers"
         Height          =   375
         IMEMode         =   2
         Left            =   1170
         MaxLength       =   10
         NumericMask     =   -1  'True
         TabIndex        =   1
         Top             =   330
         Width           =   1100
      End
      Begin VB.Label lblNo 
         Caption         =   "î‘çÜ(&N)"
         Height          =   270
         Left            =   180
         TabIndex        =   0
         Top             =   405
         Width           =   900
      End
   End
   Begin VB.Label lblStatus 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   11.25
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      BackColor       =   &H80000018&
      BorderStyle     =   1
      Caption         =   ""
      ForeColor       =   &H80000017&
      Height          =   330
      Left            =   180
      TabIndex        =   65
      Top             =   7020
      Width           =   9180
   End
   Begin VB.Label lblCompany 
      Alignment       =   1
      BackStyle       =   0
      Caption         =   "äîéÆâÔé– ê¬ótè§éñ"
      Height          =   300
      Left            =   6000
      TabIndex        =   64
      Top             =   300
      Width           =   3360
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
      BackStyle       =   0
      Caption         =   "ìæà”êÊÉJÅ[Éh"
      ForeColor       =   &H00804000&
      Height          =   450
      Left            =   180
      TabIndex        =   63
      Top             =   150
      Width           =   4200
   End
End
Attribute VB_Name = "frmCustomers"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' The screen works by its properties. What stands here checks what is about to be written, keeps
' the orders and the visit notes to the customer on the card, and says what came of it.

Private Const opGetEqual = 5
Private Const opGetNext = 6
Private Const opGetPrevious = 7
Private Const opGetGreaterOrEqual = 9
Private Const opGetLessOrEqual = 11

Private Const statusNoSuchKey = 4
Private Const statusNoPosition = 8
Private Const statusEndOfFile = 9
Private Const statusConflict = 80

Private Const nowhere = -1
Private Const lastNumber = 2147483647
Private Const mostYen = 99999999999    ' eleven digits
Private Const lastDay = "9999/12/31"
Private Const noteWidth = 44    ' letters of half a width on one line of a note
Private Const findFirst = "êÊÇ…ìæà”êÊÇåüçıÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"

' How far the operation of a button has come: SetData has not been reached, which is how a
' declined question shows; let through; refused or failed.
Private Const notAsked = 0
Private Const going = 1
Private Const ended = 2

Private progress As Integer
Private customer As Long    ' the one on the card, 0 without one
Private active As String    ' its field that no control shows
Private orderAt As Long     ' positions of the order and the note shown
Private noteAt As Long

Private Sub Form_Load()
    orderAt = nowhere
    noteAt = nowhere
    lblStatus.Caption = "î‘çÜÇì¸óÕÇµÇƒÅuåüçıÅvÇâüÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
End Sub

' --- the course of an operation: SetData, perhaps BtrieveError, Click

Private Sub Start()
    lblStatus.Caption = ""
    progress = going
End Sub

Private Sub Refuse(button As Object, words As String)
    lblStatus.Caption = words
    button.Abort = True
    progress = ended
End Sub

' Status 0 tells the button that the failure has been dealt with; any other is left to its box.
Private Sub Failed(Status As Integer, expected As Integer, words As String)
    progress = ended
    If Status = expected Then
        lblStatus.Caption = words
        Status = 0
    ElseIf Status = statusNoPosition Then
        lblStatus.Caption = findFirst
        Status = 0
    End If
End Sub

Private Function Done() As Boolean
    Done = (progress = going)
    progress = notAsked
End Function

' --- finding customers

' The list of all customers, where it was opened with the card.
Private Sub edtCustomerNo_KeyDown(KeyCode As Integer, Shift As Integer)
    If KeyCode <> vbKeyF4 Then Exit Sub
    On Error Resume Next
    frmWalk.Show vbModal
    If Err.Number <> 0 Then lblStatus.Caption = "àÍóóÅiwalk.frmÅjÇ™äJÇ©ÇÍÇƒÇ¢Ç‹ÇπÇÒÅB"
End Sub

Private Sub btnFind_SetData()
    Start
    If Not IsNumber(edtCustomerNo.Text, 1, lastNumber, 0) Then
        Refuse btnFind, "åüçıÇ∑ÇÈî‘çÜÇì¸óÕÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
    End If
End Sub

Private Sub btnFirst_SetData()
    Start
End Sub

Private Sub btnPrevious_SetData()
    Start
End Sub

Private Sub btnNext_SetData()
    Start
End Sub

Private Sub btnLast_SetData()
    Start
End Sub

' Nothing of the customer before stays beside a number that nobody has.
Private Sub btnFind_BtrieveError(TableName As String, Status As Integer)
    Dim number As String
    If Status = statusNoSuchKey Then
        number = Trim(edtCustomerNo.Text)
        dbCompany.DbClearControlData "Customers"
        edtCustomerNo.Text = number
        LeaveCard
    End If
    Failed Status, statusNoSuchKey, "î‘çÜ " & number & " ÇÃìæà”êÊÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnFirst_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusEndOfFile, "ìæà”êÊÇ™Ç†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnPrevious_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusEndOfFile, "ç≈èâÇÃìæà”êÊÇ≈Ç∑ÅB"
End Sub

Private Sub btnNext_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusEndOfFile, "ç≈å„ÇÃìæà”êÊÇ≈Ç∑ÅB"
End Sub

Private Sub btnLast_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusEndOfFile, "ìæà”êÊÇ™Ç†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnFind_Click()
    If Done() Then TakeCard
End Sub

Private Sub btnFirst_Click()
    If Done() Then TakeCard
End Sub

Private Sub btnPrevious_Click()
    If Done() Then TakeCard
End Sub

Private Sub btnNext_Click()
    If Done() Then TakeCard
End Sub

Private Sub btnLast_Click()
    If Done() Then TakeCard
End Sub

' The customer just read, with its last order and its latest note.
Private Sub TakeCard()
    customer = CLng(dbCompany.DbGetFieldData("Customers", "CustomerNo"))
    active = dbCompany.DbGetFieldData("Customers", "Active")
    dbCompany.DbClearFieldBuffer "Orders"
    dbCompany.DbSetFieldData "Orders", "CustomerNo", CStr(customer)
    dbCompany.DbSetFieldData "Orders", "OrderNo", CStr(lastNumber)
    orderAt = Place(opGetLessOrEqual, "Orders")
    ShowPanel "Orders", orderAt
    dbCompany.DbClearFieldBuffer "VisitNotes"
    dbCompany.DbSetFieldData "VisitNotes", "ìæà”êÊî‘çÜ", CStr(customer)
    dbCompany.DbSetFieldData "VisitNotes", "ñKñ‚ì˙", lastDay
    noteAt = Place(opGetGreaterOrEqual, "VisitNotes")
    ShowPanel "VisitNotes", noteAt
    If noteAt <> nowhere Then TakeNote
End Sub

Private Sub LeaveCard()
    customer = 0
    orderAt = nowhere
    noteAt = nowhere
    ShowPanel "Orders", nowhere
    ShowPanel "VisitNotes", nowhere
End Sub

' --- writing customers

' The fields hold what is about to be written: here it can still be refused.
Private Sub btnInsert_SetData()
    Start
    If IsSound(btnInsert) Then Complete "1"
End Sub

Private Sub btnUpdate_SetData()
    Start
    If Not IsOnCard(btnUpdate) Then Exit Sub
    If IsSound(btnUpdate) Then Complete active
End Sub

' The record as it is written: what no control shows, and the balance without the separators that
' its kind of field does not read.
Private Sub Complete(dealing As String)
    dbCompany.DbSetFieldData "Customers", "Active", dealing
    dbCompany.DbSetFieldData "Customers", "Balance", Plain(edtBalance.Text)
End Sub

Private Sub btnDelete_SetData()
    Start
    IsOnCard btnDelete
End Sub

Private Sub btnInsert_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnUpdate_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusConflict, "ëºÇÃêlÇ™êÊÇ…çXêVÇµÇ‹ÇµÇΩÅBÇ‡Ç§àÍìxåüçıÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
End Sub

Private Sub btnDelete_BtrieveError(TableName As String, Status As Integer)
    Failed Status, statusConflict, "ëºÇÃêlÇ™êÊÇ…çXêVÇµÇ‹ÇµÇΩÅBÇ‡Ç§àÍìxåüçıÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
End Sub

Private Sub btnInsert_Click()
    If Not Done() Then Exit Sub
    LeaveCard
    lblStatus.Caption = "î‘çÜ " & dbCompany.DbGetFieldData("Customers", "CustomerNo") & _
        " Ç≈í«â¡ÇµÇ‹ÇµÇΩÅB"
End Sub

Private Sub btnUpdate_Click()
    If Done() Then lblStatus.Caption = "çXêVÇµÇ‹ÇµÇΩÅB"
End Sub

Private Sub btnDelete_Click()
    If progress = notAsked Then lblStatus.Caption = "çÌèúÇéÊÇËÇ‚ÇﬂÇ‹ÇµÇΩÅB"
    If Not Done() Then Exit Sub
    lblStatus.Caption = "î‘çÜ " & customer & " ÇçÌèúÇµÇ‹ÇµÇΩÅB"
    LeaveCard
End Sub

' Update and delete act on the record read last, whatever number has been typed since.
Private Function IsOnCard(button As Object) As Boolean
    IsOnCard = (customer <> 0 And Trim(edtCustomerNo.Text) = CStr(customer))
    If customer = 0 Then
        Refuse button, findFirst
    ElseIf Not IsOnCard Then
        Refuse button, "î‘çÜÇÕïœÇ¶ÇÁÇÍÇ‹ÇπÇÒÅBï\é¶íÜÇÃìæà”êÊÇÕ " & customer & " Ç≈Ç∑ÅB"
    End If
End Function

Private Function IsSound(button As Object) As Boolean
    Dim words As String
    words = Mistake()
    IsSound = (words = "")
    If Not IsSound Then Refuse button, words
End Function

' What is wrong with the card, in words; empty when all is well.
Private Function Mistake() As String
    Dim words As String
    words = NumberMistake(edtCustomerNo.Text, "î‘çÜ", 0, lastNumber, 0)
    If words = "" And Trim(edtName.Text) = "" Then words = "ñºèÃÇì¸óÕÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
    If words = "" Then words = TextMistake(edtName, "ñºèÃ")
    If words = "" Then words = TextMistake(edtKana, "ÉJÉi")
    If words = "" Then words = TextMistake(edtZip, "Åß")
    If words = "" Then words = TextMistake(edtPrefecture, "ìsìπï{åß")
    If words = "" Then words = TextMistake(edtAddress, "èZèä")
    If words = "" Then words = TextMistake(edtPhone, "ìdòb")
    If words = "" Then words = TextMistake(edtEmail, "ÉÅÅ[Éã")
    If words = "" And Not IsDay(Trim(edtSince.Text)) Then
        words = "éÊà¯äJénÇÕ 2021/04/01 ÇÃÇÊÇ§Ç…ì¸óÕÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
    End If
    If words = "" Then words = NumberMistake(edtRank.Text, "ÉâÉìÉN", 1, 5, 0)
    If words = "" Then words = NumberMistake(Plain(edtCreditLimit.Text), "ó^êMå¿ìx", 0, mostYen, 0)
    If words = "" Then words = NumberMistake(Plain(edtBalance.Text), "îÑä|écçÇ", -mostYen, mostYen, 0)
    If words = "" Then words = NumberMistake(edtDiscount.Text, "ílà¯ó¶", 0, 100, 2)
    If words = "" Then words = NumberMistake(edtClosingDay.Text, "í˜ì˙", 1, 31, 0)
    If words = "" Then words = StaffMistake()
    Mistake = words
End Function

Private Function NumberMistake(text As String, label As String, low As Double, high As Double, _
        decimals As Integer) As String
    If IsNumber(text, low, high, decimals) Then Exit Function
    NumberMistake = label & "ÇÕ " & Format(low, "#,##0") & " Ç©ÇÁ " & Format(high, "#,##0") & _
        " Ç‹Ç≈ÇÃ" & IIf(decimals = 0, "êÆêî", "êîÅiè¨êî " & decimals & " åÖÇ‹Ç≈Åj") & _
        "Ç≈ì¸óÕÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
End Function

' The record buffer holds what would be stored: cut at the field's bytes, and with other characters
' for those that the file's code page has not. Some windows give a question mark for them at once.
Private Function TextMistake(edit As Object, label As String) As String
    Dim typed As String
    Dim stored As String
    typed = RTrim(edit.Text)
    stored = RTrim(dbCompany.DbGetFieldData("Customers", edit.DbField))
    If typed <> stored And Left(typed, Len(stored)) = stored Then
        TextMistake = label & "ÇÕîºäp " & edit.MaxLength & " éöÅiëSäp " & edit.MaxLength \ 2 & _
            " éöÅjÇ‹Ç≈Ç≈Ç∑ÅB"
    ElseIf typed <> stored Or InStr(typed, "?") > 0 Then
        TextMistake = label & "Ç…égÇ¶Ç»Ç¢ï∂éöÇ™Ç†ÇËÇ‹Ç∑ÅB"
    End If
End Function

Private Function StaffMistake() As String
    Dim rc As Integer
    StaffMistake = NumberMistake(edtStaffNo.Text, "íSìñ", 1, 65535, 0)
    If StaffMistake <> "" Then Exit Function
    dbCompany.DbClearFieldBuffer "Staff"
    dbCompany.DbSetFieldData "Staff", "StaffNo", Trim(edtStaffNo.Text)
    rc = dbCompany.DbAccess(opGetEqual, "Staff", "ByStaff")
    If rc <> 0 Then StaffMistake = "íSìñ " & Trim(edtStaffNo.Text) & " ÇÃé–àıÇÕÇ¢Ç‹ÇπÇÒÅB"
End Function

' An empty text counts as 0, as it does in the record.
Private Function IsNumber(text As String, low As Double, high As Double, _
        decimals As Integer) As Boolean
    Dim number As String
    Dim digits As String
    Dim point As Integer
    Dim i As Integer
    number = Trim(text)
    If number = "" Then number = "0"
    digits = number
    If Left(digits, 1) = "-" Then digits = Mid(digits, 2)
    point = InStr(digits, ".")
    If point > 0 Then
        If Len(digits) - point > decimals Then Exit Function
        digits = Left(digits, point - 1) & Mid(digits, point + 1)
    End If
    If digits = "" Then Exit Function
    For i = 1 To Len(digits)
        If InStr("0123456789", Mid(digits, i, 1)) = 0 Then Exit Function
    Next
    IsNumber = (CDbl(number) >= low And CDbl(number) <= high)
End Function

Private Function Plain(text As String) As String
    Plain = Replace(text, ",", "")
End Function

Private Function IsDay(text As String) As Boolean
    Dim parts
    Dim given As Date
    IsDay = (text = "")
    parts = Split(text, "/")
    If UBound(parts) <> 2 Then Exit Function
    If Not IsNumber(CStr(parts(0)), 1900, 9999, 0) Then Exit Function
    If Not IsNumber(CStr(parts(1)), 1, 12, 0) Then Exit Function
    If Not IsNumber(CStr(parts(2)), 1, 31, 0) Then Exit Function
    given = DateSerial(CInt(parts(0)), CInt(parts(1)), CInt(parts(2)))
    IsDay = (Day(given) = CInt(parts(2)))
End Function

' --- the orders and the visit notes of the customer on the card

Private Sub btnOrderFirst_SetData()
    If HasPanel(btnOrderFirst, "Orders", orderAt) Then SeekOrder "0"
End Sub

Private Sub btnOrderLast_SetData()
    If HasPanel(btnOrderLast, "Orders", orderAt) Then SeekOrder CStr(lastNumber)
End Sub

Private Sub btnOrderPrevious_SetData()
    CheckStep btnOrderPrevious, opGetPrevious, "Orders", orderAt, "Ç±ÇÍÇÊÇËëOÇÃéÛíçÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnOrderNext_SetData()
    CheckStep btnOrderNext, opGetNext, "Orders", orderAt, "Ç±ÇÍÇÊÇËå„ÇÃéÛíçÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
End Sub

' The key has the latest day first: Get Next leads to older notes.
Private Sub btnVisitFirst_SetData()
    If Not HasPanel(btnVisitFirst, "VisitNotes", noteAt) Then Exit Sub
    edtVisitCustomer.Text = CStr(customer)
    edtVisitDate.Text = lastDay
End Sub

Private Sub btnVisitPrevious_SetData()
    CheckStep btnVisitPrevious, opGetNext, "VisitNotes", noteAt, "Ç±ÇÍÇÊÇËëOÇÃãLò^ÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnVisitNext_SetData()
    CheckStep btnVisitNext, opGetPrevious, "VisitNotes", noteAt, "Ç±ÇÍÇÊÇËå„ÇÃãLò^ÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
End Sub

Private Sub btnOrderFirst_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnOrderLast_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnOrderPrevious_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnOrderNext_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnVisitFirst_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnVisitPrevious_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnVisitNext_BtrieveError(TableName As String, Status As Integer)
    progress = ended
End Sub

Private Sub btnOrderFirst_Click()
    If Done() Then orderAt = dbCompany.DbGetPosition("Orders")
End Sub

Private Sub btnOrderLast_Click()
    If Done() Then orderAt = dbCompany.DbGetPosition("Orders")
End Sub

Private Sub btnOrderPrevious_Click()
    If Done() Then orderAt = dbCompany.DbGetPosition("Orders")
End Sub

Private Sub btnOrderNext_Click()
    If Done() Then orderAt = dbCompany.DbGetPosition("Orders")
End Sub

Private Sub btnVisitFirst_Click()
    If Done() Then TakeNote
End Sub

Private Sub btnVisitPrevious_Click()
    If Done() Then TakeNote
End Sub

Private Sub btnVisitNext_Click()
    If Done() Then TakeNote
End Sub

' An edit control breaks no lines of its own.
Private Sub TakeNote()
    Dim lines
    Dim i As Integer
    noteAt = dbCompany.DbGetPosition("VisitNotes")
    lines = Split(Replace(edtNote.Text, vbCrLf, vbLf), vbLf)
    For i = 0 To UBound(lines)
        lines(i) = Broken(CStr(lines(i)))
    Next
    edtNote.Text = Join(lines, vbCrLf)
End Sub

Private Function Broken(whole As String) As String
    Dim taken As Integer
    Dim wide As Integer
    Dim letter As String
    Dim i As Integer
    For i = 1 To Len(whole)
        letter = Mid(whole, i, 1)
        wide = IIf(AscW(letter) >= 32 And AscW(letter) < 256, 1, 2)
        If taken + wide > noteWidth And InStr("ÅAÅBÅvÅj", letter) = 0 Then
            Broken = Broken & vbCrLf
            taken = 0
        End If
        Broken = Broken & letter
        taken = taken + wide
    Next
End Function

' The controls of the key give a Get button its search value; the customer's is not visible.
Private Sub SeekOrder(number As String)
    edtOrderCustomer.Text = CStr(customer)
    edtOrderNo.Text = number
End Sub

Private Function HasPanel(button As Object, table As String, at As Long) As Boolean
    Start
    HasPanel = (at <> nowhere)
    If HasPanel Then Exit Function
    If customer = 0 Then
        Refuse button, findFirst
    ElseIf table = "Orders" Then
        Refuse button, "Ç±ÇÃìæà”êÊÇÃéÛíçÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
    Else
        Refuse button, "Ç±ÇÃìæà”êÊÇÃñKñ‚ãLò^ÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
    End If
End Function

' Looks beyond the record shown and comes back: the button moves only within the customer.
Private Sub CheckStep(button As Object, operation As Integer, table As String, at As Long, _
        words As String)
    Dim beyond As Long
    If Not HasPanel(button, table, at) Then Exit Sub
    beyond = Place(operation, table)
    dbCompany.DbGetDirect table, at, KeyOf(table)
    If beyond = nowhere Then Refuse button, words
End Sub

' The position of what the operation finds, if it is the customer's.
Private Function Place(operation As Integer, table As String) As Long
    Dim rc As Integer
    Place = nowhere
    rc = dbCompany.DbAccess(operation, table, KeyOf(table))
    If rc <> 0 Then Exit Function
    If CLng(dbCompany.DbGetFieldData(table, OwnerOf(table))) = customer Then
        Place = dbCompany.DbGetPosition(table)
    End If
End Function

Private Sub ShowPanel(table As String, at As Long)
    If at = nowhere Then
        dbCompany.DbClearControlData table
    Else
        dbCompany.DbTransferToControl table
    End If
End Sub

Private Function KeyOf(table As String) As String
    KeyOf = IIf(table = "Orders", "ByCustomerOrder", "ìæà”êÊï ")
End Function

Private Function OwnerOf(table As String) As String
    OwnerOf = IIf(table = "Orders", "CustomerNo", "ìæà”êÊî‘çÜ")
End Function
