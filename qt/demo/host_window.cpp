#include "qt/demo/host_window.h"

#include <algorithm>

#include <QComboBox>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "common/entity_catalogue.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "sample/access_import.h"
#include "sample/host_query.h"

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

// Readable headers; other columns are split at their capitals ("FechaAlta": "Fecha alta").
QString Header(const std::string& column) {
  static const std::map<std::string, const char*> headers = {
      {"IdCliente", "Cliente"}, {"IdPais", "País"}, {"Pais", "País"},
      {"IdProvincia", "Provincia"}, {"Provincia", "Provincia"}, {"IdPoblacion", "Población"},
      {"Poblacion", "Población"}, {"IdZona", "Zona"}, {"IdTipoInmueble", "Tipo"},
      {"TipoInmueble", "Tipo"}, {"IdOperacion", "Operación"}, {"IdAliasInmueble", "Inmueble"},
      {"IdCalefaccion", "Calefacción"}, {"IdAgencia", "Agencia"}, {"IdUsuario", "Usuario"},
      {"IdAcceso", "Acceso"}, {"IdDestino", "Destino"}, {"Categorias", "Categorías"},
      {"PrecioMinimo", "Precio mínimo"}, {"PrecioMaximo", "Precio máximo"},
      {"SuperficieMaxima", "Superficie máxima"}, {"Banios", "Baños"},
      {"FechaActualizacion", "Actualizado"}, {"FechaTransmision", "Transmitido el"},
      {"FechaEnvioAnotaciones", "Envío de anotaciones"}, {"Organizacion", "Organización"},
      {"PagWeb", "Página web"}};
  if (const auto it = headers.find(column); it != headers.end()) return QString::fromUtf8(it->second);
  QString text;
  for (const char ch : column) {
    if (!text.isEmpty() && ch >= 'A' && ch <= 'Z') {
      text += ' ';
      text += QChar(ch).toLower();
    } else {
      text += QChar(ch);
    }
  }
  return text;
}

// Lookup ids shown by the name they stand for: column, table, key, name.
struct Lookup {
  const char *column, *table, *key, *name;
};
constexpr Lookup kLookups[] = {
    {"IdCliente", "Cliente", "IdCliente", "Alias"},
    {"IdPais", "Pais", "IdPais", "Nombre"},
    {"IdProvincia", "Provincia", "IdProvincia", "Nombre"},
    {"IdPoblacion", "Poblacion", "IdPoblacion", "Nombre"},
    {"IdZona", "Zona", "IdZona", "Nombre"},
    {"IdTipoInmueble", "TipoInmueble", "IdTipoInmueble", "Nombre"},
    {"IdOperacion", "Operacion", "IdOperacion", "Operacion"},
    {"IdAliasInmueble", "AliasInmueble", "IdAliasInmueble", "Inmueble"},
    {"IdCalefaccion", "Calefaccion", "IdCalefaccion", "Calefaccion"},
    {"IdAcceso", "Acceso", "IdAcceso", "Acceso"},
    {"IdAgencia", "Agencia", "IdAgencia", "Alias"},
    {"IdUsuario", "Usuario", "IdUsuario", "Nombre"}};

constexpr int kConditionLines = 3;

void Tell(const std::string& text) {
  CurrentMessenger()->Show(text, msg::kExclamation, kTitle);
}

// Thrown from the import's progress when the user cancels: the import leaves nothing.
struct ImportCancelled {};

// The cached copy of an Access file: its name, and a short hash of its folder so that two
// files of the same name do not share a copy.
QString CachedCopy(const QFileInfo& mdb) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
  QDir().mkpath(folder);
  const QByteArray hash =
      QCryptographicHash::hash(mdb.absolutePath().toUtf8(), QCryptographicHash::Sha1).toHex().left(8);
  return QDir(folder).filePath(mdb.completeBaseName() + "-" + QString::fromLatin1(hash) + ".db");
}

constexpr int kRecentSelections = 5;

// A saved selection is a list of rows (name, index, value); stored as such, QSettings keeps
// it as plain values that the user's configuration file can hold.
QVariantList ToSettings(const Variant& saved) {
  QVariantList rows;
  if (!saved.IsArray()) return rows;
  const Array2D& a = saved.AsArray();
  for (int i = a.LBound(1); i <= a.UBound(1); ++i)
    rows.push_back(QVariantList{Q(CStr(a.at(i, 0))), int{CInt(a.at(i, 1))}, Q(CStr(a.at(i, 2)))});
  return rows;
}

// Back to the array the component takes; Empty for nothing stored or a row out of shape.
Variant FromSettings(const QVariant& stored) {
  const QVariantList rows = stored.toList();
  if (rows.isEmpty()) return Variant();
  Array2D saved(0, static_cast<int>(rows.size()) - 1, 0, 2);
  for (int i = 0; i < rows.size(); ++i) {
    const QVariantList row = rows[i].toList();
    if (row.size() != 3) return Variant();
    saved.at(i, 0) = Variant(row[0].toString().toStdString());
    saved.at(i, 1) = Variant(static_cast<std::int16_t>(row[1].toInt()));
    saved.at(i, 2) = Variant(row[2].toString().toStdString());
  }
  return Variant(std::move(saved));
}

// A recent selection's name in the menu: its condition without the tables' names, short, and
// when it was accepted.
QString RecentName(const std::string& condition) {
  QString text = condition.empty() ? QStringLiteral("todos los registros") : Q(condition);
  text.remove(QRegularExpression(QStringLiteral("\\b\\w+\\.(?=\\w)")));
  if (text.size() > 60) text = text.left(59) + QChar(0x2026);
  return QStringLiteral("%1 — %2")
      .arg(text, QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy HH:mm")));
}

}  // namespace

const std::vector<std::string>& DemoHostWindow::Entities() {
  static const std::vector<std::string> entities = {
      "Inm. Propios", "Inm. Ajenos", "Inm. Archivados",     "Inm. Vendidos",
      "Agencias",     "Clientes",    "Clientes Archivados", "Demandas"};
  return entities;
}

std::string DemoHostWindow::CrossTarget(const std::string& entity) {
  return std::string(DefaultCrossTarget(entity));
}

DemoHostWindow::DemoHostWindow(std::shared_ptr<dao::Database> db, const std::string& path,
                               QWidget* parent)
    : QMainWindow(parent) {
  auto* open = menuBar()->addMenu(QStringLiteral("&Archivo"))
                   ->addAction(QStringLiteral("&Abrir base de datos de Access…"));
  open->setObjectName(QStringLiteral("actAbrirAccess"));
  connect(open, &QAction::triggered, this, [this] { OpenAccessFile(); });
  recent_ = menuBar()->addMenu(QStringLiteral("Selecciones &recientes"));
  recent_->setObjectName(QStringLiteral("mnuRecientes"));

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
  condition_ = new QLabel;
  condition_->setObjectName(QStringLiteral("lblCondicion"));
  condition_->setWordWrap(true);
  condition_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  condition_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // A long condition would push the rows down: a few lines, the rest on demand.
  auto* conditionArea = new QScrollArea(central);
  conditionArea->setWidget(condition_);
  conditionArea->setWidgetResizable(true);
  conditionArea->setFrameShape(QFrame::NoFrame);
  conditionArea_ = conditionArea;
  conditionMore_ = new QPushButton(QStringLiteral("&Ver toda"), central);
  conditionMore_->setObjectName(QStringLiteral("cmdVerCondicion"));
  conditionMore_->setCheckable(true);
  ShowWholeCondition(false);
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
  auto* conditionRow = new QHBoxLayout;
  conditionRow->addWidget(conditionArea_, 1);
  conditionRow->addWidget(conditionMore_, 0, Qt::AlignTop);
  layout->addLayout(conditionRow);
  layout->addWidget(count_);
  layout->addWidget(rows_, 1);
  setCentralWidget(central);
  resize(1100, 680);

  connect(select_, &QPushButton::clicked, this, [this] { Select(); });
  connect(cross_, &QPushButton::clicked, this, [this] { CrossSelected(); });
  connect(conditionMore_, &QPushButton::toggled, this, [this](bool on) { ShowWholeCondition(on); });
  connect(entities_, &QComboBox::currentTextChanged, this, [this] {
    UpdateCrossButton();
    UpdateRecentMenu();
  });
  connect(rows_, &QTableWidget::currentCellChanged, this, [this] { UpdateCrossButton(); });
  // The selection window tells how many records the criteria select as the user fills them.
  selection_.setLiveCount(true);
  UseDatabase(std::move(db), path);
}

void DemoHostWindow::UseDatabase(std::shared_ptr<dao::Database> db, const std::string& path) {
  db_ = std::move(db);
  path_ = path;
  selection_.setBD(db_);
  selection_.setPathDB(path);
  setWindowTitle(QStringLiteral("CriterioPredios — %1").arg(Q(path)));
  lookups_.clear();
  listedEntity_.clear();
  rows_->clear();
  rows_->setRowCount(0);
  rows_->setColumnCount(0);
  count_->clear();
  condition_->setText(QStringLiteral("Elija una entidad y pulse «Seleccionar…»."));
  UpdateCrossButton();
  UpdateRecentMenu();
}

bool DemoHostWindow::OpenAccessFile() {
  QFileDialog ask(this, QStringLiteral("Abrir base de datos de Access"), QString(),
                  QStringLiteral("Bases de datos de Access (*.mdb *.accdb);;Todos los ficheros (*)"));
  ask.setFileMode(QFileDialog::ExistingFile);
  ask.setOption(QFileDialog::DontUseNativeDialog);  // a window of this process, as the others
  if (ask.exec() != QDialog::Accepted || ask.selectedFiles().isEmpty()) return false;
  const QFileInfo mdb(ask.selectedFiles().front());
  try {
    const QString copy = CachedCopy(mdb);
    const QFileInfo cached(copy);
    if (!cached.exists() || cached.lastModified() <= mdb.lastModified()) {
      QProgressDialog progress(QStringLiteral("Importando %1…").arg(mdb.fileName()),
                               QStringLiteral("Cancelar"), 0, 0, this);
      progress.setWindowTitle(QString::fromUtf8(kTitle));
      progress.setWindowModality(Qt::WindowModal);
      progress.setMinimumDuration(0);
      sample::ImportOptions options;
      options.replace = true;  // an older copy is replaced only by a whole new one
      options.progress = [&](const std::string& table, long done, long total) {
        progress.setLabelText(QStringLiteral("Importando %1: tabla %2…").arg(mdb.fileName(), Q(table)));
        progress.setMaximum(static_cast<int>(total));
        progress.setValue(static_cast<int>(std::min(done, total)));
        if (progress.wasCanceled()) throw ImportCancelled{};
      };
      sample::ImportAccess(mdb.absoluteFilePath().toStdString(), copy.toStdString(), options);
    }
    UseDatabase(dao::OpenDatabase(copy.toStdString()), copy.toStdString());
    ListRows(entities_->currentText().toStdString(), "");
    statusBar()->showMessage(QStringLiteral("Datos de %1.").arg(mdb.absoluteFilePath()));
    return true;
  } catch (const ImportCancelled&) {
  } catch (const Error& e) {
    Tell(e.description());
  } catch (const std::exception& e) {
    Tell(e.what());
  }
  return false;
}

bool DemoHostWindow::Select() {
  const std::string entity = entities_->currentText().toStdString();
  return Select(entity, SavedSelection(entity));
}

bool DemoHostWindow::Select(const std::string& entity, const Variant& saved) {
  try {
    selection_.setEntidad(entity);
    // Handed back after the entity, which routes it to the right criteria control.
    if (!saved.IsEmpty()) selection_.setSeleccion(saved);
    if (!selection_.mtdMostrar()) return false;
    statusBar()->clearMessage();  // an earlier cross is no longer what is listed
    // The user may have changed the entity inside the dialog.
    const std::string chosen = selection_.Entidad();
    const QVariantList accepted = ToSettings(selection_.Seleccion());
    const auto settings = Settings(chosen);
    if (selection_.GuardarSeleccion()) {
      settings->setValue(QStringLiteral("guardada"), accepted);
      statusBar()->showMessage(QStringLiteral("Selección guardada para %1.").arg(Q(chosen)));
    }
    // Newest first; the same selection accepted again moves up instead of repeating.
    QVariantList recent = settings->value(QStringLiteral("recientes")).toList();
    recent.erase(std::remove_if(recent.begin(), recent.end(),
                                [&](const QVariant& r) {
                                  return r.toMap().value(QStringLiteral("seleccion")) == accepted;
                                }),
                 recent.end());
    recent.prepend(QVariantMap{{QStringLiteral("nombre"), RecentName(selection_.SQLW())},
                               {QStringLiteral("seleccion"), accepted}});
    while (recent.size() > kRecentSelections) recent.removeLast();
    settings->setValue(QStringLiteral("recientes"), recent);
    entities_->setCurrentText(Q(chosen));
    UpdateRecentMenu();
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
  std::string target = CrossTarget(listedEntity_);
  const int row = rows_->currentRow();
  if (target.empty() || row < 0) return false;
  const std::string key = FindEntity(listedEntity_)->key;
  int column = -1;
  for (int c = 0; c < rows_->columnCount(); ++c)
    if (rows_->horizontalHeaderItem(c)->data(Qt::UserRole).toString() == Q(key)) column = c;
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

std::unique_ptr<QSettings> DemoHostWindow::Settings(const std::string& entity) const {
  // The user's configuration: ~/.config/criteriopredios/demo.conf. One group per database,
  // since a selection names ids of its own database's lists, then one per entity.
  auto settings = std::make_unique<QSettings>(QStringLiteral("criteriopredios"),
                                              QStringLiteral("demo"));
  const QByteArray database =
      QCryptographicHash::hash(QByteArray::fromStdString(path_), QCryptographicHash::Sha1);
  settings->beginGroup(QStringLiteral("selecciones/%1/%2")
                           .arg(QString::fromLatin1(database.toHex().left(12)), Q(entity)));
  return settings;
}

Variant DemoHostWindow::SavedSelection(const std::string& entity) const {
  return FromSettings(Settings(entity)->value(QStringLiteral("guardada")));
}

void DemoHostWindow::UpdateRecentMenu() {
  recent_->clear();
  const std::string entity = entities_->currentText().toStdString();
  const QVariantList recent = Settings(entity)->value(QStringLiteral("recientes")).toList();
  for (const QVariant& r : recent) {
    const QVariantMap map = r.toMap();
    const Variant saved = FromSettings(map.value(QStringLiteral("seleccion")));
    recent_->addAction(map.value(QStringLiteral("nombre")).toString(), this,
                       [this, entity, saved] { Select(entity, saved); });
  }
  if (recent.isEmpty()) recent_->addAction(QStringLiteral("(ninguna)"))->setEnabled(false);
}

int DemoHostWindow::ListedRows() const { return rows_->rowCount(); }

void DemoHostWindow::ListRows(const std::string& entity, const std::string& condition) {
  dao::Recordset rs = db_->OpenRecordset(sample::HostQuery(entity, condition));
  const int columns = rs.FieldCount();
  const long count = rs.RecordCount();
  rows_->setUpdatesEnabled(false);
  rows_->clear();
  rows_->setColumnCount(columns);
  rows_->setRowCount(static_cast<int>(count));
  // The first column is the record's own key: shown as its number.
  std::vector<const std::map<long, QString>*> names(columns, nullptr);
  for (int c = 0; c < columns; ++c) {
    const std::string name = rs.Fields(c).Name();
    auto* header = new QTableWidgetItem(c == 0 ? QStringLiteral("Nº") : Header(name));
    header->setData(Qt::UserRole, Q(name));
    header->setToolTip(Q(name));
    rows_->setHorizontalHeaderItem(c, header);
    if (c > 0) names[c] = &LookupNames(name);
  }
  for (int r = 0; !rs.Eof(); rs.MoveNext(), ++r) {
    for (int c = 0; c < columns; ++c) {
      const Variant value = rs.Fields(c).Value();
      QString text = CellText(value);
      if (names[c] && !value.IsNull() && IsNumeric(value)) {
        const auto it = names[c]->find(CLng(value));
        if (it != names[c]->end()) text = it->second;
      }
      rows_->setItem(r, c, new QTableWidgetItem(text));
    }
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

const std::map<long, QString>& DemoHostWindow::LookupNames(const std::string& column) {
  static const std::map<long, QString> none;
  const auto cached = lookups_.find(column);
  if (cached != lookups_.end()) return cached->second;
  for (const Lookup& l : kLookups) {
    if (column != l.column) continue;
    std::map<long, QString>& names = lookups_[column];
    dao::Recordset rs = db_->OpenRecordset(std::string("SELECT ") + l.key + ", " + l.name +
                                           " FROM " + l.table);
    for (; !rs.Eof(); rs.MoveNext())
      names[CLng(rs.Fields(0).Value())] = CellText(rs.Fields(1).Value());
    return names;
  }
  return none;
}

void DemoHostWindow::ShowWholeCondition(bool whole) {
  const int line = condition_->fontMetrics().lineSpacing();
  conditionArea_->setMaximumHeight(whole ? QWIDGETSIZE_MAX : kConditionLines * line + 4);
  conditionMore_->setText(whole ? QStringLiteral("&Ver menos") : QStringLiteral("&Ver toda"));
}

void DemoHostWindow::UpdateCrossButton() {
  // The entity chosen in the list, not the one listed: they differ once the user picks another.
  const std::string chosen = entities_->currentText().toStdString();
  const std::string target = CrossTarget(chosen);
  cross_->setText(target.empty() ? QStringLiteral("&Cruzar")
                                 : QStringLiteral("&Cruzar con %1").arg(Q(target)));
  cross_->setEnabled(!target.empty() && chosen == listedEntity_ && rows_->currentRow() >= 0);
}

}  // namespace cp
