#include "platform/mdb/access_file.h"

#include <glib.h>  // before libmdb, which includes it inside extern "C"
#include <mdbtools.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/core/date.h"
#include "platform/core/error.h"

namespace cp::mdb {
namespace {

constexpr char kSource[] = "CriterioPredios.Access";
constexpr int kRowOffsetMask = 0x1fff;  // a row's offset on its page, without its flags
constexpr std::size_t kDefaultBindSize = MDB_BIND_SIZE;

[[noreturn]] void Fail(long number, const std::string& text) { throw Error(number, text, kSource); }

[[noreturn]] void Truncated(const std::string& path) {
  Fail(ownerr::kAccessFileTruncated,
       "El fichero '" + path +
           "' está incompleto o dañado: faltan partes de la base de datos de Access "
           "(¿se copió a medias?).");
}

std::uint32_t Le32(const unsigned char* p) {
  return std::uint32_t{p[0]} | std::uint32_t{p[1]} << 8 | std::uint32_t{p[2]} << 16 |
         std::uint32_t{p[3]} << 24;
}

std::int64_t Le64(const unsigned char* p) {
  return static_cast<std::int64_t>(std::uint64_t{Le32(p)} | std::uint64_t{Le32(p + 4)} << 32);
}

// What the first page says: the page size and that libmdb can read the version. Checked
// here so that libmdb never meets a file it would reject (it only prints and gives up).
struct FileHeader {
  std::uint32_t version = 0;
  long page_size = 0;
  std::uintmax_t pages = 0;
};

FileHeader ReadHeader(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::error_code ec;
  const std::uintmax_t size = std::filesystem::file_size(path, ec);
  if (!in || ec)
    Fail(err::kFileNotFound, "No se puede abrir el fichero '" + path + "'.");
  std::array<unsigned char, 0x20> head{};
  in.read(reinterpret_cast<char*>(head.data()), head.size());
  static constexpr char kJet[] = "Standard Jet DB", kAce[] = "Standard ACE DB";
  const bool magic = in.gcount() == static_cast<std::streamsize>(head.size()) && head[0] == 0 &&
                     head[1] == 1 && head[2] == 0 && head[3] == 0 &&
                     (std::memcmp(head.data() + 4, kJet, sizeof kJet) == 0 ||
                      std::memcmp(head.data() + 4, kAce, sizeof kAce) == 0);
  if (!magic)
    Fail(ownerr::kNotAnAccessFile,
         "El fichero '" + path + "' no es una base de datos de Access (.mdb).");
  FileHeader h;
  h.version = Le32(head.data() + 0x14);
  switch (h.version) {
    case MDB_VER_JET3: h.page_size = 2048; break;
    case MDB_VER_JET4:
    case MDB_VER_ACCDB_2007:
    case MDB_VER_ACCDB_2010:
    case MDB_VER_ACCDB_2013:
    case MDB_VER_ACCDB_2016:
    case MDB_VER_ACCDB_2019: h.page_size = 4096; break;
    default:
      Fail(ownerr::kAccessVersionUnreadable,
           "El fichero '" + path + "' es de una versión de Access que no se puede leer (versión " +
               std::to_string(h.version) + ").");
  }
  // The catalog starts on the third page; a whole file is made of whole pages.
  const auto page = static_cast<std::uintmax_t>(h.page_size);
  if (size % page != 0 || size < 3 * page) Truncated(path);
  h.pages = size / page;
  return h;
}

ColumnType TypeOf(int mdbType) {
  switch (mdbType) {
    case MDB_BOOL: return ColumnType::YesNo;
    case MDB_BYTE: return ColumnType::Byte;
    case MDB_INT: return ColumnType::Integer;
    case MDB_LONGINT: return ColumnType::Long;
    case MDB_MONEY: return ColumnType::Currency;
    case MDB_FLOAT: return ColumnType::Single;
    case MDB_DOUBLE: return ColumnType::Double;
    case MDB_NUMERIC: return ColumnType::Decimal;
    case MDB_DATETIME: return ColumnType::DateTime;
    case MDB_TEXT: return ColumnType::Text;
    case MDB_MEMO: return ColumnType::Memo;
    case MDB_REPID: return ColumnType::Guid;
    default: return ColumnType::Binary;
  }
}

double ParseNumber(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

struct TableDefFree {
  void operator()(MdbTableDef* t) const { mdb_free_tabledef(t); }
};
using TableDefPtr = std::unique_ptr<MdbTableDef, TableDefFree>;

}  // namespace

std::string_view TypeName(ColumnType type) {
  switch (type) {
    case ColumnType::YesNo: return "Sí/No";
    case ColumnType::Byte: return "Byte";
    case ColumnType::Integer: return "Entero";
    case ColumnType::Long: return "Entero largo";
    case ColumnType::Currency: return "Moneda";
    case ColumnType::Single: return "Simple";
    case ColumnType::Double: return "Doble";
    case ColumnType::Decimal: return "Decimal";
    case ColumnType::DateTime: return "Fecha/Hora";
    case ColumnType::Text: return "Texto";
    case ColumnType::Memo: return "Memo";
    case ColumnType::Guid: return "Id. de réplica";
    case ColumnType::Binary: return "Objeto OLE o binario";
  }
  return "?";
}

const AccessColumn* AccessTable::Find(std::string_view column) const {
  for (const AccessColumn& c : columns)
    if (c.name == column) return &c;
  return nullptr;
}

struct AccessFile::Impl {
  std::string path;
  FileHeader header;
  MdbHandle* mdb = nullptr;
  std::vector<AccessTable> tables;
  // The definition of each table, same order, read and checked once when the file opens.
  std::vector<TableDefPtr> definitions;

  ~Impl() {
    definitions.clear();  // before the handle they belong to
    if (mdb) mdb_close(mdb);
  }

  bool PageInFile(std::uint64_t page) const { return page < header.pages; }

  // Every page a table's definition points to lies inside the file: its own page, the
  // pages of its usage map and the data pages the map lists.
  void CheckPages(MdbTableDef* t) const {
    if (t->map_sz < 5 || !t->usage_map) return;
    if (t->usage_map[0] == 1)  // a map of map pages
      for (std::size_t at = 1; at + 4 <= t->map_sz; at += 4) {
        const std::uint32_t map_page = Le32(t->usage_map + at);
        if (map_page && !PageInFile(map_page)) Truncated(path);
      }
    for (gint32 page = mdb_map_find_next(mdb, t->usage_map, t->map_sz, 0); page > 0;
         page = mdb_map_find_next(mdb, t->usage_map, t->map_sz, page))
      if (!PageInFile(static_cast<std::uint32_t>(page))) Truncated(path);
  }

  TableDefPtr ReadTable(MdbCatalogEntry* entry) const {
    if (!PageInFile(entry->table_pg)) Truncated(path);
    // The definition names the pages of its usage maps: libmdb would read them blindly.
    if (mdb_read_pg(mdb, entry->table_pg) != header.page_size) Truncated(path);
    for (const int at : {mdb->fmt->tab_usage_map_offset, mdb->fmt->tab_free_map_offset})
      if (!PageInFile(Le32(mdb->pg_buf + at) >> 8)) Truncated(path);
    TableDefPtr t(mdb_read_table(entry));
    if (!t || !mdb_read_columns(t.get())) Truncated(path);
    CheckPages(t.get());
    return t;
  }

  void Open() {
    header = ReadHeader(path);
    mdb = mdb_open(path.c_str(), MDB_NOFLAGS);
    if (!mdb)
      Fail(ownerr::kNotAnAccessFile,
           "El fichero '" + path + "' no es una base de datos de Access (.mdb).");
    mdb_set_date_fmt(mdb, "%Y-%m-%d %H:%M:%S");
    mdb_set_boolean_fmt_numbers(mdb);
    // The catalog is itself a table on the third page: check it before reading it.
    MdbCatalogEntry catalog{};
    catalog.mdb = mdb;
    std::strcpy(catalog.object_name, "MSysObjects");
    catalog.object_type = MDB_TABLE;
    catalog.table_pg = 2;
    ReadTable(&catalog);
    if (!mdb_read_catalog(mdb, MDB_TABLE)) Truncated(path);
    for (unsigned i = 0; i < mdb->num_catalog; ++i) {
      auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
      if (entry->object_type != MDB_TABLE || !mdb_is_user_table(entry)) continue;
      TableDefPtr t = ReadTable(entry);
      AccessTable table;
      table.name = entry->object_name;
      table.rows = t->num_rows;
      for (unsigned c = 0; c < t->num_cols; ++c) {
        const auto* col = static_cast<const MdbColumn*>(g_ptr_array_index(t->columns, c));
        AccessColumn column;
        column.name = col->name;
        column.type = TypeOf(col->col_type);
        column.size = col->col_size;
        if (column.type == ColumnType::Text && header.version != MDB_VER_JET3) column.size /= 2;
        column.auto_number = col->is_long_auto != 0;
        table.columns.push_back(std::move(column));
      }
      tables.push_back(std::move(table));
      definitions.push_back(std::move(t));
    }
  }

  // A Memo value in full: libmdb writes at most its bind size, so make room for this one.
  Variant Memo(int start, int size) const {
    if (size < MDB_MEMO_OVERHEAD) return Variant(std::string());
    const std::uint32_t head = Le32(mdb->pg_buf + start);
    const std::uint32_t length = head & 0x3fffffffu;
    const bool inline_value = (head & 0x80000000u) != 0;
    if (!inline_value && length > 0 && !PageInFile(Le32(mdb->pg_buf + start + 4) >> 8))
      Truncated(path);
    // Compressed text takes at most 2 bytes of UTF-8 per stored byte, UCS-2 at most 1.5.
    const std::size_t needed = 2 * std::size_t{length} + 16;
    const bool grow = needed > kDefaultBindSize;
    if (grow) mdb_set_bind_size(mdb, needed);
    char* text = mdb_col_to_string(mdb, mdb->pg_buf, start, MDB_MEMO, size);
    if (grow) mdb_set_bind_size(mdb, kDefaultBindSize);
    std::string value(text ? text : "");
    g_free(text);
    if (value.empty() && length > 0 && !inline_value) Truncated(path);
    return Variant(std::move(value));
  }

  Variant Value(const AccessColumn& column, const MdbColumn& col, const MdbField& field) const {
    const unsigned char* buf = mdb->pg_buf;
    const int start = field.start;
    if (column.type == ColumnType::YesNo)  // the Null bit holds the value
      return Variant(std::int32_t{field.is_null ? 0 : 1});
    if (field.is_null) return Variant::Null();
    switch (column.type) {
      case ColumnType::Byte: return Variant(std::int32_t{buf[start]});
      case ColumnType::Integer:
        return Variant(std::int32_t{static_cast<std::int16_t>(buf[start] | buf[start + 1] << 8)});
      case ColumnType::Long: return Variant(static_cast<std::int32_t>(Le32(buf + start)));
      case ColumnType::Currency: return Variant(static_cast<double>(Le64(buf + start)) / 10000.0);
      case ColumnType::Single: {
        // The float's shortest decimal text, as Access shows it, read back as a double.
        char text[32];
        const auto end = std::to_chars(text, text + sizeof text, mdb_get_single(mdb->pg_buf, start)).ptr;
        return Variant(ParseNumber(std::string(text, end)));
      }
      case ColumnType::Double: return Variant(mdb_get_double(mdb->pg_buf, start));
      case ColumnType::DateTime: return Variant(Date{mdb_get_double(mdb->pg_buf, start)});
      case ColumnType::Decimal: {
        char* text = mdb_numeric_to_string(mdb, start, col.col_scale, col.col_prec);
        const double value = ParseNumber(text ? text : "0");
        g_free(text);
        return Variant(value);
      }
      case ColumnType::Text: {
        if (field.siz <= 0) return Variant(std::string());
        std::string text(static_cast<std::size_t>(field.siz) * 2 + 8, '\0');
        const int length = mdb_unicode2ascii(mdb, reinterpret_cast<const char*>(buf + start),
                                             field.siz, text.data(), text.size());
        text.resize(static_cast<std::size_t>(length));
        return Variant(std::move(text));
      }
      case ColumnType::Memo: return Memo(start, field.siz);
      case ColumnType::Guid: {
        char* text = mdb_col_to_string(mdb, mdb->pg_buf, start, MDB_REPID, field.siz);
        std::string value(text ? text : "");
        g_free(text);
        return Variant(std::move(value));
      }
      default: return Variant::Null();
    }
  }
};

AccessFile::AccessFile(const std::string& path) : impl_(std::make_unique<Impl>()) {
  impl_->path = path;
  impl_->Open();
}

AccessFile::~AccessFile() = default;

const std::string& AccessFile::path() const { return impl_->path; }
const std::vector<AccessTable>& AccessFile::tables() const { return impl_->tables; }

const AccessTable* AccessFile::Find(std::string_view name) const {
  for (const AccessTable& t : impl_->tables)
    if (t.name == name) return &t;
  return nullptr;
}

void AccessFile::ReadRows(std::string_view name, const RowFunction& row) const {
  Impl& d = *impl_;
  std::size_t index = 0;
  while (index < d.tables.size() && d.tables[index].name != name) ++index;
  if (index == d.tables.size())
    Fail(dao::daoerr::kTableNotFound,
         "No se encuentra la tabla '" + std::string(name) + "' en '" + d.path + "'.");
  const AccessTable& table = d.tables[index];
  MdbTableDef* t = d.definitions[index].get();
  mdb_rewind_table(t);
  std::vector<MdbField> fields(t->num_cols);
  std::vector<Variant> values(t->num_cols);
  long read = 0;
  // Nothing is bound: libmdb only finds each row; its values are taken from the row itself,
  // where Null and the empty text differ.
  while (mdb_fetch_row(t)) {
    int start = 0;
    std::size_t length = 0;
    if (mdb_find_row(d.mdb, static_cast<int>(t->cur_row) - 1, &start, &length) != 0 ||
        mdb_crack_row(t, start & kRowOffsetMask, length, fields.data()) < 0)
      Truncated(d.path);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const MdbField& field = fields[i];
      const auto* col = static_cast<const MdbColumn*>(g_ptr_array_index(t->columns, field.colnum));
      const AccessColumn& column = table.columns[static_cast<std::size_t>(field.colnum)];
      values[static_cast<std::size_t>(field.colnum)] = d.Value(column, *col, field);
    }
    row(values);
    ++read;
  }
  if (read < table.rows) Truncated(d.path);
}

}  // namespace cp::mdb
