#include "qt/demo/host_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "cli/selection_commands.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"

namespace cp {
namespace {

constexpr const char* kTitle = "CriterioPredios";

QString Q(const std::string& text) { return QString::fromStdString(text); }

// A value as the list shows it: Null blank, Yes/No in words, dates as ISO text.
QString CellText(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Null:
      return {};
    case Variant::Type::Boolean:
      return value.AsBool() ? QStringLiteral("Sí") : QStringLiteral("No");
    case Variant::Type::Date:
      return Q(IsoDate(value.AsDate()));
    default:
      return Q(CStr(value));
  }
}

// The key column of the records that can be crossed.
std::string KeyOf(const std::string& entity) {
  if (entity == "Demandas") return "IdDemanda";
  if (entity == "Inm. Propios") return "IdIPropio";
  if (entity == "Inm. Ajenos") return "IdIAjeno";
  return {};
}

void Tell(const std::string& text) {
  CurrentMessenger()->Show(text, msg::kExclamation, kTitle);
}

}  // namespace

const std::vector<std::string>& DemoHostWindow::Entities() {
  static const std::vector<std::string> entities = {
      "Inm. Propios", "Inm. Ajenos", "Inm. Archivados",     "Inm. Vendidos",
      "Agencias",     "Clientes",    "Clientes Archivados", "Demandas"};
  return entities;
}

std::string DemoHostWindow::CrossTarget(const std::string& entity) {
  if (entity == "Demandas") return "Inm. Propios";
  if (entity == "Inm. Propios" || entity == "Inm. Ajenos") return "Demandas";
  return {};
}

DemoHostWindow::DemoHostWindow(std::shared_ptr<dao::Database> db, const std::string& path,
                               QWidget* parent)
    : QMainWindow(parent), db_(std::move(db)) {
  selection_.setBD(db_);
  selection_.setPathDB(path);
  setWindowTitle(QStringLiteral("CriterioPredios — %1").arg(Q(path)));

  auto* central = new QWidget(this);
  auto* entityLabel = new QLabel(QStringLiteral("&Entidad:"), central);
  entities_ = new QComboBox(central);
  entities_->setObjectName(QStringLiteral("cboEntidad"));
  for (const std::string& entity : Entities()) entities_->addItem(Q(entity));
  entityLabel->setBuddy(entities_);
  select_ = new QPushButton(QStringLiteral("&Seleccionar…"), central);
  select_->setObjectName(QStringLiteral("cmdSeleccionar"));
  select_->setDefault(true);
  cross_ = new QPushButton(QStringLiteral("&Cruzar"), central);
  cross_->setObjectName(QStringLiteral("cmdCruzar"));
  condition_ = new QLabel(central);
  condition_->setObjectName(QStringLiteral("lblCondicion"));
  condition_->setWordWrap(true);
  condition_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  count_ = new QLabel(central);
  count_->setObjectName(QStringLiteral("lblFilas"));
  rows_ = new QTableWidget(central);
  rows_->setObjectName(QStringLiteral("grdFilas"));
  rows_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  rows_->setSelectionBehavior(QAbstractItemView::SelectRows);
  rows_->setSelectionMode(QAbstractItemView::SingleSelection);
  rows_->setAlternatingRowColors(true);
  rows_->verticalHeader()->setVisible(false);

  auto* top = new QHBoxLayout;
  top->addWidget(entityLabel);
  top->addWidget(entities_);
  top->addWidget(select_);
  top->addSpacing(24);
  top->addWidget(cross_);
  top->addStretch(1);
  auto* layout = new QVBoxLayout(central);
  layout->addLayout(top);
  layout->addWidget(condition_);
  layout->addWidget(count_);
  layout->addWidget(rows_, 1);
  setCentralWidget(central);
  resize(1100, 680);

  condition_->setText(QStringLiteral("Elija una entidad y pulse «Seleccionar…»."));
  connect(select_, &QPushButton::clicked, this, [this] { Select(); });
  connect(cross_, &QPushButton::clicked, this, [this] { CrossSelected(); });
  connect(rows_, &QTableWidget::currentCellChanged, this, [this] { UpdateCrossButton(); });
  UpdateCrossButton();
}

bool DemoHostWindow::Select() {
  try {
    const std::string entity = entities_->currentText().toStdString();
    selection_.setEntidad(entity);
    // Handed back after the entity, which routes it to the right criteria control.
    const auto saved = saved_.find(entity);
    if (saved != saved_.end()) selection_.setSeleccion(saved->second);
    if (!selection_.mtdMostrar()) return false;
    // The user may have changed the entity inside the dialog.
    const std::string chosen = selection_.Entidad();
    if (selection_.GuardarSeleccion()) {
      saved_[chosen] = selection_.Seleccion();
      statusBar()->showMessage(QStringLiteral("Selección guardada para %1.").arg(Q(chosen)));
    }
    entities_->setCurrentText(Q(chosen));
    ListRows(chosen, selection_.SQLW());
    return true;
  } catch (const Error& e) {
    Tell(e.description());
  } catch (const std::exception& e) {
    Tell(e.what());
  }
  return false;
}

bool DemoHostWindow::CrossSelected() {
  const std::string key = KeyOf(listedEntity_);
  std::string target = CrossTarget(listedEntity_);
  const int row = rows_->currentRow();
  if (key.empty() || target.empty() || row < 0) return false;
  int column = -1;
  for (int c = 0; c < rows_->columnCount(); ++c)
    if (rows_->horizontalHeaderItem(c)->text() == Q(key)) column = c;
  if (column < 0) return false;
  try {
    std::int32_t id = CLng(Variant(rows_->item(row, column)->text().toStdString()));
    std::string from = listedEntity_;
    selection_.Cruzar(id, target, from);
    statusBar()->showMessage(QStringLiteral("Cruce de %1 nº %2 con %3.")
                                 .arg(Q(from)).arg(id).arg(Q(target)));
    entities_->setCurrentText(Q(selection_.Entidad()));
    ListRows(selection_.Entidad(), selection_.SQLW());
    return true;
  } catch (const Error& e) {
    Tell(e.description());
  } catch (const std::exception& e) {
    Tell(e.what());
  }
  return false;
}

Variant DemoHostWindow::SavedSelection(const std::string& entity) const {
  const auto saved = saved_.find(entity);
  return saved == saved_.end() ? Variant() : saved->second;
}

int DemoHostWindow::ListedRows() const { return rows_->rowCount(); }

void DemoHostWindow::ListRows(const std::string& entity, const std::string& condition) {
  dao::Recordset rs = db_->OpenRecordset(cli::HostQuery(entity, condition));
  const int columns = rs.FieldCount();
  const long count = rs.RecordCount();
  rows_->setUpdatesEnabled(false);
  rows_->clear();
  rows_->setColumnCount(columns);
  rows_->setRowCount(static_cast<int>(count));
  QStringList headers;
  for (int c = 0; c < columns; ++c) headers.push_back(Q(rs.Fields(c).Name()));
  rows_->setHorizontalHeaderLabels(headers);
  for (int r = 0; !rs.Eof(); rs.MoveNext(), ++r) {
    for (int c = 0; c < columns; ++c)
      rows_->setItem(r, c, new QTableWidgetItem(CellText(rs.Fields(c).Value())));
  }
  rows_->resizeColumnsToContents();
  rows_->setUpdatesEnabled(true);
  listedEntity_ = entity;

  condition_->setText(condition.empty()
                          ? QStringLiteral("Condición: ninguna (todos los registros)")
                          : QStringLiteral("Condición: %1").arg(Q(condition)));
  count_->setText(count == 1 ? QStringLiteral("1 registro de %1").arg(Q(entity))
                             : QStringLiteral("%1 registros de %2").arg(count).arg(Q(entity)));
  if (count > 0) rows_->setCurrentCell(0, 0);
  UpdateCrossButton();
}

void DemoHostWindow::UpdateCrossButton() {
  const std::string target = CrossTarget(listedEntity_);
  cross_->setText(target.empty() ? QStringLiteral("&Cruzar")
                                 : QStringLiteral("&Cruzar con %1").arg(Q(target)));
  cross_->setEnabled(!target.empty() && rows_->currentRow() >= 0);
}

}  // namespace cp
