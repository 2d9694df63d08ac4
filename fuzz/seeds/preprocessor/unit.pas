unit vrProjects_Prefix_Main;
{$IFDEF ddUseTLG}uses Logger;{$ELSE}uses None;{$ENDIF}
{$DEFINE ddLocal}{$IFNDEF ddLocal}x{$ENDIF}
{$UNDEF ddLocal}
end.
