object dmService: TdmService
  OldCreateOrder = False
  OnCreate = DataModuleCreate
  OnDestroy = DataModuleDestroy
  Left = 240
  Top = 160
  Height = 150
  Width = 215
  object tsaPlugin: TtsaPlugin
    Version = '#Plugin.Version#'
    DeepName = '#Plugin.DeepName#'
    Author = '#Plugin.Author#'
    Copyright = '#Plugin.Copyright#'
    DCI.UniqueID = 
      '76739466-C7CCC116-16A33222-47BFB8F1-9791A178-66AC3B9B-88221C18-A' +
      'A7C1E84-E5F8CA93-E0B23C20'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
  object tmrWork: TTimer
    Enabled = False
    Interval = 600000
    OnTimer = tmrWorkTimer
    Left = 128
    Top = 24
  end
end
