#include "qt/qt_list_picker.h"

#include <QApplication>
#include <QString>
#include <memory>

#include "common/list_picker.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "qt/list_picker_window.h"

namespace cp {
namespace {

// The protocol's properties, in the order the bridge sets them.
constexpr std::array<const char*, 13> kProperties = {
    "TipoLista",   "TituloForm", "tabla",    "BDatos",    "campo",        "IdCampo", "SQLSentencia",
    "Seleccionar", "nuevoId",    "Op_Nuevo", "Op_Borrar", "Op_Modificar", "anchura"};

std::size_t IndexOf(const char* name) {
  for (std::size_t i = 0; i < kProperties.size(); ++i)
    if (LowerAscii(kProperties[i]) == LowerAscii(name)) return i;
  throw Error(err::kPropertyNotFound, StandardDescription(err::kPropertyNotFound),
              kListPickerProgId);
}

// A field arrives as the table definition's Field object; a plain name is taken as it is.
std::string FieldName(const Variant& campo) {
  if (campo.IsObject() && campo.AsObject()) return CStr(campo.AsObject()->GetProperty("Name"));
  if (campo.IsEmpty() || campo.IsNull()) return {};
  return CStr(campo);
}

QString Q(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

QtListPicker::QtListPicker() {
  for (std::size_t i = 0; i < kProperties.size(); ++i) {
    Expose(kProperties[i], [this, i] { return values_[i]; },
           [this, i](const Variant& v) { values_[i] = v; });
  }
  ExposeMethod("mtdMostrar", [this](const std::vector<Variant>&) { return Show(); });
}

const Variant& QtListPicker::Value(const char* name) const { return values_[IndexOf(name)]; }

std::vector<std::string> QtListPicker::Values() const {
  std::string sql = Value("SQLSentencia").IsString() ? CStr(Value("SQLSentencia")) : "";
  if (sql.empty()) {
    const std::string campo = FieldName(Value("campo"));
    const std::string tabla = Value("tabla").IsString() ? CStr(Value("tabla")) : "";
    if (campo.empty() || tabla.empty())
      throw Error(err::kInvalidProcedureCall,
                  "La lista necesita la tabla y el campo, o una sentencia SQL.", kListPickerProgId);
    sql = "SELECT DISTINCT " + campo + " FROM " + tabla + " ORDER BY " + campo;
  }
  // The host's open database when there is one; the picker's own connection otherwise.
  std::shared_ptr<dao::Database> db = BD();
  if (!db) db = dao::OpenDatabase(CStr(Value("BDatos")));
  std::vector<std::string> values;
  dao::Recordset rs = db->OpenRecordset(sql, dao::dbOpenForwardOnly);
  for (; !rs.Eof(); rs.MoveNext()) {
    const Variant v = rs.Fields(0).Value();
    if (!v.IsNull()) values.push_back(CStr(v));
  }
  return values;
}

Variant QtListPicker::Show() {
  if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
    throw Error(err::kInvalidProcedureCall, "La lista necesita una aplicación con ventanas.",
                kListPickerProgId);
  QStringList values;
  for (const std::string& value : Values()) values.push_back(Q(value));
  const Variant& anchura = Value("anchura");
  const int width = WidthForAnchura(IsNumeric(anchura) ? CInt(anchura) : 0);
  const Variant& seleccionar = Value("Seleccionar");
  const QString chosen = seleccionar.IsString() ? Q(seleccionar.AsString()) : QString();

  // Over the window that opened it (the selection dialog), so it is centred there.
  QWidget* parent = QApplication::activeModalWidget();
  if (!parent) parent = QApplication::activeWindow();
  ListPickerWindow window(Q(CStr(Value("TituloForm"))), width, values, chosen, parent);
  if (window.exec() != QDialog::Accepted) return Variant(false);
  values_[IndexOf("Seleccionar")] = Variant(window.Chosen().toStdString());
  return Variant(true);
}

std::optional<ObjectFactory> RegisterQtListPicker() {
  return RegisterProgId(kListPickerProgId,
                        [] { return std::make_shared<QtListPicker>(); });
}

}  // namespace cp
