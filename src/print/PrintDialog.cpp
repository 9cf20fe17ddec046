#include "print/PrintDialog.h"

#include "platform/FileDialogs.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Text.h"
#include "platform/qt/ValueBox.h"
#include "print/PrintCaptions.h"
#include "print/PrintJob.h"
#include "print/QtPaper.h"
#include "ui_PrintDialog.h"

#include <QFontDialog>
#include <QFontInfo>

#include <utility>

namespace calder {
namespace {

constexpr int kMarginCharacters = 5;

std::optional<PrintFont> AskForFont(const PrintFont& preset, QWidget* parent) {
  // The dialog shows no font that this desktop lacks: it begins with the one that is taken in its place.
  QFont font(QFontInfo(ReportFont(preset, 1)).family());
  font.setPointSizeF(preset.size);
  font.setBold(preset.bold);
  font.setItalic(preset.italic);
  font.setStrikeOut(preset.strikethrough);
  font.setUnderline(preset.underline);
  bool accepted = false;
  font =
      QFontDialog::getFont(&accepted, font, parent, {}, QFontDialog::ScalableFonts | QFontDialog::DontUseNativeDialog);
  if (!accepted) return std::nullopt;
  return PrintFont{
      font.family().toStdString(), font.pointSizeF(), font.bold(), font.italic(), font.strikeOut(), font.underline()};
}

} // namespace

PrintDialog::PrintDialog(std::unique_ptr<PrintDesk> desk, const PrintServices& services, QWidget* parent)
    : ToolForm(services.registry, kFormName, parent), desk_(std::move(desk)), services_(services),
      ui_(std::make_unique<Ui::PrintDialog>()) {
  ui_->setupUi(this);
  SetPrintCaptions(*this, services_.messages);
  margins_ = {ui_->Text_0, ui_->Text_1, ui_->Text_2};
  for (ValueBox* box : margins_) box->SetCharacters(kMarginCharacters);
  ConnectMargins();
  ConnectButtons();
  ui_->Frame_Margins->setEnabled(desk_->UsesMargins());
  ui_->Label_Note->setVisible(!desk_->UsesMargins());
  ui_->Btn_Preview->setEnabled(services_.printers != nullptr && desk_->HasReport());
  ui_->Btn_Prt_0->setEnabled(services_.printers != nullptr);
  ShowMargins();
  ShowPages();
  if (desk_->UsesMargins()) margins_[0]->setFocus();
  Place({720, 520});
}

PrintDialog::~PrintDialog() {
  DisconnectControls();
}

void PrintDialog::ConnectMargins() {
  const struct {
    QToolButton* button;
    int margin;
    int by;
  } steps[] = {{ui_->UD_Margin_0_Up, 0, 1},    {ui_->UD_Margin_0_Down, 0, -1}, {ui_->UD_Margin_1_Up, 1, 1},
               {ui_->UD_Margin_1_Down, 1, -1}, {ui_->UD_Margin_2_Up, 2, 1},    {ui_->UD_Margin_2_Down, 2, -1}};
  for (const auto& step : steps) {
    On(step.button, [this, margin = static_cast<PrintDesk::Margin>(step.margin), by = step.by] {
      desk_->StepMargin(margin, by);
      ShowMargins();
      ShowPages();
    });
  }
  for (std::size_t i = 0; i < margins_.size(); ++i) {
    connect(margins_[i], &ValueBox::EditingFinished, this, [this, i](const QString& text) {
      desk_->Text_LostFocus(static_cast<PrintDesk::Margin>(i), text.toStdString());
      ShowMargins();
      ShowPages();
    });
    connect(margins_[i], &ValueBox::FocusNext, this, [this, i](bool backwards) {
      // The first and the last box lead out again.
      const std::array<QWidget*, 5> order{ui_->Btn_Cancel, margins_[0], margins_[1], margins_[2], ui_->Btn_Prt_0};
      order[backwards ? i : i + 2]->setFocus(Qt::TabFocusReason);
    });
  }
}

void PrintDialog::ConnectButtons() {
  On(ui_->Btn_Prt_0, [this] { SetUpPrinter(); });
  On(ui_->Btn_Prt_1, [this] { ChooseFont(); });
  On(ui_->Btn_Preview, [this] { Preview(); });
  On(ui_->Btn_Pdf, [this] { SavePdf(); });
  On(ui_->Btn_OK, [this] { Print(); });
  On(ui_->Btn_Cancel, [this] { done(Rejected); });
  On(ui_->Btn_Page_Back, [this] { TurnPage(-1); });
  On(ui_->Btn_Page_Next, [this] { TurnPage(1); });
}

void PrintDialog::ShowMargins() {
  for (std::size_t i = 0; i < margins_.size(); ++i)
    margins_[i]->ShowText(Text(desk_->MarginText(static_cast<PrintDesk::Margin>(i))));
}

QPageLayout PrintDialog::Layout() const {
  return services_.printers != nullptr && services_.printers->Ready() ? services_.printers->Layout() : DefaultLayout();
}

void PrintDialog::ShowPages() {
  const ErrMsg& language = services_.messages;
  const QPageLayout layout = Layout();
  ui_->Preview_Page->ShowPages(layout, PreviewPages(layout, *desk_));
  const QString paper = layout.pageSize().name();
  QString printer;
  if (services_.printers == nullptr)
    printer = QString::fromUtf8(language.Pick("印刷機能がありません(%1)。PDF 保存は使えます。",
                                              "Printing support is missing (%1). Save as PDF works."))
                  .arg(services_.printersFault);
  else if (!services_.printers->Ready())
    printer = QString::fromUtf8(
        language.Pick("ﾌﾟﾘﾝﾀが設定されていません。PDF 保存は使えます。", "No printer is set up. Save as PDF works."));
  else
    printer = services_.printers->Name();
  ui_->Label_Printer->setText(printer);
  ui_->Label_Paper->setText(paper);
  const PrintFont& font = desk_->Font();
  ui_->Label_Font->setText(QStringLiteral("%1, %2 pt").arg(Text(font.name)).arg(font.size));
  ShowPageNumber();
}

void PrintDialog::ShowPageNumber() {
  const PagePreview& pages = *ui_->Preview_Page;
  ui_->Label_Page->setText(QString::fromUtf8(services_.messages.Pick("%1 / %2 ﾍﾟｰｼﾞ", "page %1 of %2"))
                               .arg(pages.Current() + 1)
                               .arg(pages.Pages()));
  ui_->Btn_Page_Back->setEnabled(pages.Current() > 0);
  ui_->Btn_Page_Next->setEnabled(pages.Current() + 1 < pages.Pages());
}

void PrintDialog::TurnPage(int by) {
  ui_->Preview_Page->GoTo(ui_->Preview_Page->Current() + by);
  ShowPageNumber();
}

void PrintDialog::ChooseFont() {
  if (desk_->Btn_Font_Click([this](const PrintFont& preset) { return AskForFont(preset, this); })) ShowPages();
}

void PrintDialog::SetUpPrinter() {
  if (services_.printers->SetUp(this)) ShowPages();
}

void PrintDialog::Preview() {
  services_.printers->Preview(this, JobName(), [this](QPagedPaintDevice& device) { PrintOn(device, *desk_); });
  ShowPages(); // paper and printer can be chosen there
}

void PrintDialog::SavePdf() {
  const auto answer =
      services_.fileDialogs.Save({"", "PDF(*.pdf)|*.pdf", 1, services_.documentName.toStdString() + ".pdf", "pdf"});
  if (!answer) return;
  if (WritePdf(answer->path, Layout(), JobName(), *desk_))
    done(Accepted);
  else
    services_.messages.ErrorBoxText("[" + answer->path + "] " + services_.messages.MessageText(kMsgWriteFailed));
}

void PrintDialog::Print() {
  if (desk_->HasReport()) {
    if (services_.printers == nullptr || !services_.printers->Ready()) {
      services_.messages.ErrorBoxText(
          services_.messages.Pick("ﾌﾟﾘﾝﾀが設定されていません。｢PDF で保存｣を使うか,ﾌﾟﾘﾝﾀを設定してください。",
                                  "No printer is set up. Use \"Save as PDF\", or set a printer up."));
      return;
    }
    PrintOn(services_.printers->Device(JobName()), *desk_); // a printer that fails ends the job where it stands
  }
  done(Accepted);
}

} // namespace calder
