object Main: TForm
  Caption = 'Main'
  object tsaMan: TqrxTsaMan
    Version = '1.0'
    DCI.UniqueID = 
      'OLD'
  end
end
