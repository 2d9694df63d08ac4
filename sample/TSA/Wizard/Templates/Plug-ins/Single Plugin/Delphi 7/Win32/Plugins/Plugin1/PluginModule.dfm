object dmPlugin: TdmPlugin
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
      '9DF1DA83-5B4D39BF-D184E6EB-691657E6-C71D1478-0218E461-C745BCCE-9' +
      '91CB628-26E6A9F9-B440A1DA'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
