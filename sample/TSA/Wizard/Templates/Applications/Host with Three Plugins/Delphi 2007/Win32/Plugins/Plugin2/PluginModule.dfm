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
      '3FC82F33-9FA2AEC8-B75ABE9B-4327A693-7B277859-BB9A62FB-F823F16E-B' +
      '26760F3-5E416E1D-B2E9362B'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
