VERSION 5.00
Object = "{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0"; "qrnbt350.ocx"
Begin VB.Form frmOrders 
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
   Caption         =   "éÛíç"
   ClientHeight    =   5400
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   9300
   LinkTopic       =   "frmOrders"
   MaxButton       =   0   'False
   ScaleHeight     =   5400
   ScaleWidth      =   9300
   StartUpPosition =   2
   Begin QRNBTRLib.QRNBtr dbCompany 
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   65537
      AllOpen         =   -1  'True
      CacheDDF        =   -1  'True
      DDFDir          =   "."
      Left            =   8700
      Top             =   120
   End
   Begin VB.Label lblOrderNo 
      Caption         =   "éÛíçî‘çÜ(&N)"
      Height          =   285
      Left            =   180
      TabIndex        =   0
      Top             =   225
      Width           =   1200
   End
   Begin QRNBTRLib.QRNEdit edtOrderNo 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   1764
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "OrderNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   345
      Left            =   1440
      TabIndex        =   1
      Top             =   150
      Width           =   1000
   End
   Begin VB.Label lblOrderDate 
      Caption         =   "éÛíçì˙"
      Height          =   285
      Left            =   2760
      TabIndex        =   2
      Top             =   225
      Width           =   700
   End
   Begin QRNBTRLib.QRNEdit edtOrderDate 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   2469
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "OrderDate"
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   345
      Left            =   3480
      ReadOnly        =   -1  'True
      TabIndex        =   3
      Top             =   150
      Width           =   1400
   End
   Begin VB.Label lblCustomerNo 
      Caption         =   "ìæà”êÊî‘çÜ"
      Height          =   285
      Left            =   180
      TabIndex        =   4
      Top             =   675
      Width           =   1200
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
      _ExtentX        =   1764
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "CustomerNo"
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   345
      Left            =   1440
      ReadOnly        =   -1  'True
      TabIndex        =   5
      Top             =   600
      Width           =   1000
   End
   Begin QRNBTRLib.QRNEdit edtCustomer 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   7056
      _ExtentY        =   609
      _Version        =   65537
      DbField         =   "Name"
      DbSource        =   "dbCompany"
      DbTable         =   "Customers"
      Height          =   345
      Left            =   2560
      ReadOnly        =   -1  'True
      TabIndex        =   6
      Top             =   600
      Width           =   4000
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
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "åüçı(&F)"
      ClearControlData =   0   'False
      DbIndex         =   "ByOrder"
      DbOperation     =   3
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   420
      Left            =   180
      TabIndex        =   7
      Top             =   1140
      Width           =   1100
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
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "êÊì™(&H)"
      ClearControlData =   0   'False
      DbIndex         =   "ByOrder"
      DbOperation     =   4
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   420
      Left            =   1400
      TabIndex        =   8
      Top             =   1140
      Width           =   1100
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
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "ëOÇ÷(&P)"
      ClearControlData =   0   'False
      DbIndex         =   "ByOrder"
      DbOperation     =   7
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   420
      Left            =   2620
      TabIndex        =   9
      Top             =   1140
      Width           =   1100
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
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "éüÇ÷(&X)"
      ClearControlData =   0   'False
      DbIndex         =   "ByOrder"
      DbOperation     =   6
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   420
      Left            =   3840
      TabIndex        =   10
      Top             =   1140
      Width           =   1100
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
      _ExtentX        =   1940
      _ExtentY        =   741
      _Version        =   65537
      Caption         =   "ññîˆ(&E)"
      ClearControlData =   0   'False
      DbIndex         =   "ByOrder"
      DbOperation     =   5
      DbSource        =   "dbCompany"
      DbTable         =   "Orders"
      Height          =   420
      Left            =   5060
      TabIndex        =   11
      Top             =   1140
      Width           =   1100
   End
   Begin QRNBTRLib.QRNGrid grdLines 
      BeginProperty Font 
         Name            =   "ÇlÇr ÇoÉSÉVÉbÉN"
         Size            =   9.75
         Charset         =   128
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      _ExtentX        =   15769
      _ExtentY        =   5080
      _Version        =   65537
      AlignFixedCells =   -1  'True
      AllowDelete     =   -1  'True
      AllowUpdate     =   -1  'True
      Cols            =   7
      DbListFields    =   "ProductCode,Quantity,UnitPrice,DiscountPercent,Amount"
      DbListIndex     =   "ByLine"
      DbListSource    =   "dbCompany"
      DbListTable     =   "OrderLines"
      DbSkipRecords   =   -1
      DbUpdateOption  =   0
      Height          =   2880
      Left            =   180
      SetColNames     =   0   'False
      TabIndex        =   12
      Top             =   1740
      Width           =   8940
   End
   Begin VB.Label lblStatus 
      Caption         =   ""
      Height          =   285
      Left            =   180
      TabIndex        =   13
      Top             =   4860
      Width           =   5400
   End
   Begin VB.Label lblTotalName 
      Caption         =   "ñæç◊ÇÃçáåv"
      Height          =   285
      Left            =   5760
      TabIndex        =   14
      Top             =   4860
      Width           =   1100
   End
   Begin VB.Label lblTotal 
      Alignment       =   1  'Right Justify
      Caption         =   ""
      Height          =   285
      Left            =   6960
      TabIndex        =   15
      Top             =   4860
      Width           =   1500
   End
End
Attribute VB_Name = "frmOrders"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' An order and its lines. The grid reads the lines of the order shown and writes each row that was
' changed; code names its columns, looks up the products' names and works out what a row costs.

Private Const opGetEqual = 5
Private Const opGetFirst = 12
Private Const statusEndOfFile = 9

Private Const colQuantity = 2
Private Const colPrice = 3
Private Const colDiscount = 4
Private Const colAmount = 5

Private Const quantityLimit = 9999    ' as many digits as the grid takes for a Long

' What a button's operation came to; its Click comes behind.
Private told As String

Private Sub Form_Load()
    DressColumns
    If dbCompany.DbAccess(opGetFirst, "Orders", "ByOrder") <> 0 Then Exit Sub
    dbCompany.DbTransferToControl "Orders"
    ShowOrder
End Sub

Private Sub DressColumns()
    Dim widths, col As Integer
    widths = Array(560, 1100, 800, 1200, 900, 1300, 3020)
    For col = 0 To UBound(widths)
        grdLines.ColWidth(col) = widths(col)
    Next col
    For col = colQuantity To colAmount
        grdLines.TextAlign(col) = AlignRight
    Next col
    grdLines.FormatString(colQuantity) = "#,##0"
    grdLines.FormatString(colPrice) = "#,##0.00"
    grdLines.FormatString(colDiscount) = "0.00"
    grdLines.FormatString(colAmount) = "#,##0"
End Sub

Private Sub ShowOrder()
    lblStatus.Caption = told
    told = ""
    ShowCustomer dbCompany.DbGetFieldData("Orders", "CustomerNo")
    ShowLines dbCompany.DbGetFieldData("Orders", "OrderNo")
End Sub

Private Sub ShowCustomer(number As String)
    dbCompany.DbSetFieldData "Customers", "CustomerNo", number
    If dbCompany.DbAccess(opGetEqual, "Customers", "ByCustomer") = 0 Then
        dbCompany.DbTransferToControl "Customers"
    Else
        dbCompany.DbClearControlData "Customers"
    End If
End Sub

' A fill adds rows and takes none away: those of the order before go first.
Private Sub ShowLines(number As String)
    grdLines.Rows = grdLines.FixedRows + 1
    grdLines.DbConditions = "@OrderNo = " & number
    grdLines.Refresh
    NameColumns
    grdLines.Row = grdLines.FixedRows
    grdLines.Col = colQuantity
    ShowTotal
End Sub

Private Sub NameColumns()
    Dim names, col As Integer
    names = Array("çs", "è§ïiÉRÅ[Éh", "êîó ", "íPâø", "ílà¯ó¶", "ã‡äz", "è§ïiñº")
    grdLines.Row = 0
    For col = 0 To UBound(names)
        grdLines.Col = col
        grdLines.Text = names(col)
    Next col
End Sub

' The last column is none of the record's: the product's name, which no row writes.
Private Sub grdLines_Format(strText As String)
    dbCompany.DbSetFieldData "Products", "ProductCode", Left(strText, InStr(strText, vbTab) - 1)
    If dbCompany.DbAccess(opGetEqual, "Products", "ByProduct") <> 0 Then Exit Sub
    strText = strText & vbTab & Trim(dbCompany.DbGetFieldData("Products", "Name"))
End Sub

Private Sub ShowTotal()
    Dim total As Double, row As Long, current As Long
    current = grdLines.Row
    For row = grdLines.FixedRows To grdLines.Rows - 1
        grdLines.Row = row
        total = total + NumberIn(colAmount)
    Next row
    grdLines.Row = current
    lblTotal.Caption = Format(total, "#,##0")
End Sub

' The number in a column of the current row.
Private Function NumberIn(col As Integer) As Double
    Dim current As Long
    current = grdLines.Col
    grdLines.Col = col
    If IsNumeric(grdLines.Text) Then NumberIn = CDbl(grdLines.Text)
    grdLines.Col = current
End Function

Private Sub grdLines_BeforeColUpdate(pCancel As Integer, ColValue As String)
    lblStatus.Caption = ""
    If grdLines.Col = colQuantity And IsQuantity(ColValue) Then Exit Sub
    lblStatus.Caption = IIf(grdLines.Col = colQuantity, "êîó ÇÕ 1 Ç©ÇÁ 9999 Ç‹Ç≈Ç≈Ç∑ÅB", "ïœçXÇ≈Ç´ÇÈÇÃÇÕêîó ÇæÇØÇ≈Ç∑ÅB")
    pCancel = 1
End Sub

Private Function IsQuantity(text As String) As Boolean
    If Not IsNumeric(text) Then Exit Function
    IsQuantity = CDbl(text) >= 1 And CDbl(text) <= quantityLimit
End Function

' The amount follows the quantity, without fractions of a yen.
Private Sub grdLines_AfterColUpdate()
    Dim amount As Double
    amount = Int(NumberIn(colQuantity) * NumberIn(colPrice) * (100 - NumberIn(colDiscount)) / 100)
    grdLines.Col = colAmount
    grdLines.Text = CStr(amount)
    grdLines.Col = colQuantity
End Sub

Private Sub grdLines_AfterUpdate()
    lblStatus.Caption = "ñæç◊ÇçXêVÇµÇ‹ÇµÇΩÅB"
    ShowTotal
End Sub

Private Sub grdLines_AfterDelete()
    lblStatus.Caption = "ñæç◊ÇçÌèúÇµÇ‹ÇµÇΩÅB"
    ShowTotal
End Sub

Private Sub btnFind_Click()
    ShowOrder
End Sub

Private Sub btnFirst_Click()
    ShowOrder
End Sub

Private Sub btnPrevious_Click()
    ShowOrder
End Sub

Private Sub btnNext_Click()
    ShowOrder
End Sub

Private Sub btnLast_Click()
    ShowOrder
End Sub

Private Sub btnFind_BtrieveError(TableName As String, Status As Integer)
    told = "Ç±ÇÃî‘çÜÇÃéÛíçÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
    Status = 0
End Sub

Private Sub btnPrevious_BtrieveError(TableName As String, Status As Integer)
    TellEnd Status
End Sub

Private Sub btnNext_BtrieveError(TableName As String, Status As Integer)
    TellEnd Status
End Sub

Private Sub TellEnd(Status As Integer)
    If Status <> statusEndOfFile Then Exit Sub
    told = "Ç±ÇÍÇÊÇËêÊÇ…éÛíçÇÕÇ†ÇËÇ‹ÇπÇÒÅB"
    Status = 0
End Sub
