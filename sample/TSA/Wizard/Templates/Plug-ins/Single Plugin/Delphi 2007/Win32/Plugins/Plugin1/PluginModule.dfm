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
      '5870E49A-38160AA5-8E7779CC-642A2719-068DEA36-710649B2-1DEB22F3-F' +
      '6A70274-CA010BB0-6751B719'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
