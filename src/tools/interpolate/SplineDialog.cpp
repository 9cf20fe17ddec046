#include "tools/interpolate/SplineDialog.h"

#include "app/Program.h"
#include "platform/qt/Text.h"
#include "tools/frame/ScopedFlag.h"
#include "tools/interpolate/PointGridModel.h"
#include "tools/interpolate/SplineCaptions.h"
#include "ui_SplineDialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

namespace calder {

SplineDialog::SplineDialog(Program& program, SplineDesk& desk, QWidget* parent)
    : ToolForm(program.registry, kFormName, parent), messages_(program.messages), desk_(desk),
      ui_(std::make_unique<Ui::SplineDialog>()) {
  ui_->setupUi(this);
  const ErrMsg& language = messages_;
  AddMenu("Menu_File", QString::fromUtf8(language.Pick("ﾌｧｲﾙ(&F)", "&File")), {ui_->Menu_FileOpen, ui_->Menu_FileSave});
  SetSplineCaptions(*this, language);
  model_ = new PointGridModel(
      desk_, QString::fromUtf8(language.Pick("最初の点と同じ値になります。", "Follows the first point")), this);
  ui_->flxSpread->setModel(model_);
  Connect();
  desk_.SetPort(this);
  desk_.Form_Load();
  Place({300, 520}, FirstPlace::Beside);
  ui_->flxSpread->setFocus();
  // Only a grid that has its size knows where to scroll.
  auto* shown = new QTimer(this); // the form owns it
  shown->setSingleShot(true);
  connect(shown, &QTimer::timeout, this, [this] { ShowRow(); });
  shown->start(0);
}

SplineDialog::~SplineDialog() {
  DisconnectControls();
  desk_.SetPort(nullptr);
}

void SplineDialog::Connect() {
  using Kind = SplineDesk::Kind;
  On(ui_->Btn_Spline_0, [this] { desk_.Btn_Spline_Click(Kind::Linear); });
  On(ui_->Btn_Spline_1, [this] { desk_.Btn_Spline_Click(Kind::Spline); });
  On(ui_->Btn_Spline_2, [this] { desk_.Btn_Spline_Click(Kind::Continuous); });
  On(ui_->Btn_Insrt, [this] { desk_.Btn_Insrt_Click(); });
  On(ui_->Btn_Delete, [this] { desk_.Btn_Delete_Click(); });
  On(ui_->Btn_AllClear, [this] { desk_.Btn_AllClear_Click(); });
  On(ui_->Btn_Exit, [this] { close(); });
  On(ui_->Menu_FileOpen, [this] { desk_.Menu_FileOpen_Click(); });
  On(ui_->Menu_FileSave, [this] { desk_.Menu_FileSave_Click(); });
  PointGrid* grid = ui_->flxSpread;
  grid->SetCells({[this](int row) { return desk_.CellEditable(row + 1); }, [this] { return desk_.Rows(); },
                  [this](int row, int column, const QString& text) {
                    const auto which = column == 0 ? SplineDesk::Column::X : SplineDesk::Column::Y;
                    return desk_.EditCell(row + 1, which, text.toStdString());
                  }});
  connect(grid, &PointGrid::DeletePressed, this, [this] { desk_.Btn_Delete_Click(); });
  connect(grid, &PointGrid::PastePressed, this,
          [this] { desk_.Paste(QGuiApplication::clipboard()->text().toStdString()); });
  connect(grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
    if (!showing_) desk_.GridRowSelect(current.row() + 1);
  });
}

void SplineDialog::ShowPoints() {
  model_->Refresh();
  ui_->Label_Foot->setText(Text(desk_.CountText()));
  ui_->Label_Foot->setToolTip(QString());
}

void SplineDialog::ShowRow() {
  const ScopedFlag showing(showing_);
  const QModelIndex current = ui_->flxSpread->currentIndex();
  const QModelIndex wanted = model_->index(desk_.CurrentRow() - 1, std::max(current.column(), 0));
  if (wanted != current) ui_->flxSpread->setCurrentIndex(wanted);
  if (isVisible()) ui_->flxSpread->scrollTo(wanted);
}

void SplineDialog::HideCellEditor() {
  ui_->flxSpread->HideEditor();
}

void SplineDialog::ShowRefusal(const std::string& text) {
  ui_->Label_Foot->setText(Text(text));
}

} // namespace calder
