// tests/containers/LazarusForm.pas: a form of Lazarus whose own ActiveX container holds the control.
// LazarusForm.exe SECONDS shows the form for that long, lets go of the control and ends. It fails when
// a property is read back other than it was set.
program LazarusForm;
{$mode objfpc}{$H+}
{$APPTYPE CONSOLE}
uses
  Interfaces, SysUtils, Classes, Forms, Controls, ExtCtrls, StdCtrls, Variants, ActiveXContainer;

type
  TPlannerForm = class(TForm)
  private
    Container: TActiveXContainer;
    Clock: TTimer;
    procedure PlaceControl(Sender: TObject);
    procedure LetGo(Sender: TObject);
    procedure Check(const What, Found, Wanted: string);
  public
    constructor CreateNew(TheOwner: TComponent; Num: Integer = 0); override;
  end;

constructor TPlannerForm.CreateNew(TheOwner: TComponent; Num: Integer);
var
  Note: TLabel;
begin
  inherited CreateNew(TheOwner, Num);
  Caption := 'Lazarus form with a year planner';
  SetBounds(40, 40, 1000, 620);
  Note := TLabel.Create(Self);
  Note.Parent := Self;
  Note.SetBounds(8, 8, 600, 20);
  Note.Caption := 'The planner below is placed by TActiveXContainer.';
  Container := TActiveXContainer.Create(Self);
  Container.SetBounds(8, 32, 984, 580);
  Container.OleClassName := 'OutlookVelkor.YearPlan';
  Clock := TTimer.Create(Self);
  Clock.Enabled := False;
  Clock.OnTimer := @LetGo;
  OnShow := @PlaceControl;
end;

procedure TPlannerForm.Check(const What, Found, Wanted: string);
begin
  WriteLn(What, ': ', Found);
  if Found <> Wanted then
  begin
    WriteLn('  expected: ', Wanted);
    ExitCode := 1;
  end;
  Flush(Output);
end;

procedure TPlannerForm.PlaceControl(Sender: TObject);
var
  Planner: Variant;
begin
  Container.Active := True;
  Planner := Container.vObject;
  Planner.TitleName := 'In a Lazarus form';
  Planner.DisplaySubject := True;
  Check('TitleName', string(Planner.TitleName), 'In a Lazarus form');
  Check('DisplaySubject', BoolToStr(Planner.DisplaySubject, True), 'True');
  Clock.Interval := 1000 * StrToInt(ParamStr(1));
  Clock.Enabled := True;
end;

procedure TPlannerForm.LetGo(Sender: TObject);
begin
  Clock.Enabled := False;
  Container.Active := False;
  Check('Control in the form', BoolToStr(Container.Active, True), 'False');
  Close;
end;

begin
  Application.Initialize;
  with TPlannerForm.CreateNew(Application) do
  try
    ShowModal;
  finally
    Free;
  end;
end.
