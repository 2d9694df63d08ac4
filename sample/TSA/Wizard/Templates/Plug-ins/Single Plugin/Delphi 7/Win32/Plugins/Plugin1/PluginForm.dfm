object frmPlugin: TfrmPlugin
  Left = 300
  Top = 200
  BorderStyle = bsDialog
  Caption = '#Plugin.DeepName#'
  ClientHeight = 121
  ClientWidth = 320
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'Tahoma'
  Font.Style = []
  KeyPreview = True
  OldCreateOrder = False
  Position = poScreenCenter
  OnClose = FormClose
  OnKeyPress = FormKeyPress
  PixelsPerInch = 96
  TextHeight = 13
  object labName: TLabel
    Left = 16
    Top = 16
    Width = 200
    Height = 13
    Caption = '#Plugin.DeepName#'
    Font.Charset = DEFAULT_CHARSET
    Font.Color = clWindowText
    Font.Height = -11
    Font.Name = 'Tahoma'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object labVersion: TLabel
    Left = 16
    Top = 36
    Width = 200
    Height = 13
    Caption = 'Version #Plugin.Version# for #Product.Name#'
  end
  object labCopyright: TLabel
    Left = 16
    Top = 56
    Width = 200
    Height = 13
    Caption = '#Plugin.Copyright#'
  end
  object btnClose: TButton
    Left = 232
    Top = 84
    Width = 75
    Height = 25
    Cancel = True
    Caption = 'Close'
    Default = True
    TabOrder = 0
    OnClick = btnCloseClick
  end
end
