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
      Begin QRNBTRLib.QRNEdit edtNote 
         BeginProperty Font 
            Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
            Size            =   11.25
            Charset         =   128
            Weight          =   400
            Underline       =   0   'False
            Italic          =   0   'False
            Strikethrough   =   0   'False
         EndProperty
         _ExtentX        =   8255
         _ExtentY        =   1482
         _Version        =   65537
         DbField         =   "ì‡óe"
         DbSource        =   "dbCompany"
         DbTable         =   "VisitNotes"
         Height          =   840
         IMEMode         =   4
         Left            =   180
         MultiLine       =   -1  'True
         TabIndex        =   61
         Top             =   1215
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
         DbIndex         =   "ãLò^î‘çÜèá"
         DbOperation     =   6
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
         DbIndex         =   "ãLò^î‘çÜèá"
         DbOperation     =   7
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
         DbIndex         =   "ãLò^î‘çÜèá"
         DbOperation     =   5
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
         DbIndex         =   "ByOrder"
         DbOperation     =   5
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
         DbIndex         =   "ByOrder"
         DbOperation     =   4
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
         DbIndex         =   "ByOrder"
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
         DbIndex         =   "ByOrder"
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
         Height          =   375
         IMEMode         =   2
         Left            =   6900
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

' The screen works by its properties alone; what stands here only makes it speak.

Private Sub Form_Load()
    lblStatus.Caption = "î‘çÜÇì¸óÕÇµÇƒÅuåüçıÅvÇâüÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
End Sub

' The fields hold what is about to be written: here it can still be refused.
Private Sub btnInsert_SetData()
    lblStatus.Caption = ""
    If Trim(edtName.Text) = "" Then
        lblStatus.Caption = "ñºèÃÇì¸óÕÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
        btnInsert.Abort = True
    End If
End Sub

Private Sub btnFind_SetData()
    lblStatus.Caption = ""
End Sub

' Status 0 tells the button that the failure has been dealt with.
Private Sub btnFind_BtrieveError(TableName As String, Status As Integer)
    If Status = 4 Then
        lblStatus.Caption = "î‘çÜ " & edtCustomerNo.Text & " ÇÃìæà”êÊÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
        Status = 0
    End If
End Sub

Private Sub btnNext_BtrieveError(TableName As String, Status As Integer)
    If Status = 9 Then lblStatus.Caption = "ç≈å„ÇÃìæà”êÊÇ≈Ç∑ÅB": Status = 0
End Sub

Private Sub btnPrevious_BtrieveError(TableName As String, Status As Integer)
    If Status = 9 Then lblStatus.Caption = "ç≈èâÇÃìæà”êÊÇ≈Ç∑ÅB": Status = 0
End Sub

Private Sub btnUpdate_BtrieveError(TableName As String, Status As Integer)
    If Status = 80 Then
        lblStatus.Caption = "ëºÇÃêlÇ™êÊÇ…çXêVÇµÇ‹ÇµÇΩÅBÇ‡Ç§àÍìxåüçıÇµÇƒÇ≠ÇæÇ≥Ç¢ÅB"
        Status = 0
    End If
End Sub
