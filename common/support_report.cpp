#include "common/support_report.h"

#include <sys/utsname.h>
#include <zip.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

#include <fmt/format.h>

#include "common/error_log.h"
#include "common/mail_client.h"
#include "common/messages.h"
#include "common/messenger.h"
#include "common/program_info.h"
#include "common/window_capture.h"
#include "platform/core/clock.h"

namespace cp {
namespace {

constexpr const char* kCrLf = "\r\n";

std::optional<std::string> ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream content;
  content << in.rdbuf();
  if (in.bad()) return std::nullopt;
  return content.str();
}

std::string Folder(const std::string& file) {
  const auto slash = file.rfind('/');
  return slash == std::string::npos ? std::string() : file.substr(0, slash + 1);
}

std::string BaseName(const std::string& file) {
  const auto slash = file.rfind('/');
  return slash == std::string::npos ? file : file.substr(slash + 1);
}

std::string ErrorText(const Error& e) {
  return e.engine_code().empty() ? e.description()
                                 : e.description() + " [" + e.engine_code() + "]";
}

// The PRETTY_NAME of /etc/os-release (else /usr/lib/os-release), without its quotes.
std::string OsRelease() {
  for (const char* file : {"/etc/os-release", "/usr/lib/os-release"}) {
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
      if (line.rfind("PRETTY_NAME=", 0) != 0) continue;
      std::string value = line.substr(12);
      if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
          value.back() == value.front()) {
        value = value.substr(1, value.size() - 2);
      }
      return value;
    }
  }
  return "desconocido";
}

// Informe.txt: what support needs beside the log. Lines end with LF, as the log's do.
std::string Description(const std::string& label, const Error& e) {
  const DateParts now = SplitDate(Now());
  std::string text;
  text += fmt::format("Fecha: {:02}/{:02}/{:04} {:02}:{:02}:{:02}\n", now.day, now.month, now.year,
                      now.hour, now.minute, now.second);
  text += "Programa: " + ProgramTitle() + "\n";
  text += "Versión del programa: " + VersionPrograma() + "\n";
  text += "Versión de CriterioPredios: " + ComponentVersion() + "\n";
  text += "Rutina: " + label + "\n";
  text += "Número del error: " + std::to_string(e.number()) + "\n";
  text += "Texto del error: " + ErrorText(e) + "\n";
  text += "\n";
  struct utsname machine {};
  if (::uname(&machine) == 0) {
    text += fmt::format("Sistema: {} {} {} {}\n", machine.sysname, machine.release,
                        machine.version, machine.machine);
    text += std::string("Equipo: ") + machine.nodename + "\n";
  }
  text += "Distribución: " + OsRelease() + "\n";
  for (const char* name : {"LANG", "LANGUAGE", "LC_ALL", "LC_CTYPE", "LC_NUMERIC", "LC_TIME",
                           "LC_COLLATE", "LC_MONETARY", "LC_MESSAGES", "XDG_CURRENT_DESKTOP",
                           "XDG_SESSION_TYPE"}) {
    const char* value = std::getenv(name);
    text += std::string(name) + "=" + (value ? value : "") + "\n";
  }
  return text;
}

// Owns an archive being written; discarded unless Close succeeds.
class Archive {
 public:
  // Creates path, failing when it exists.
  explicit Archive(const std::string& path) {
    int error = 0;
    zip_ = zip_open(path.c_str(), ZIP_CREATE | ZIP_EXCL, &error);
  }
  ~Archive() {
    if (zip_) zip_discard(zip_);
  }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
  bool valid() const { return zip_ != nullptr; }

  // Adds a member; content must live until Close.
  bool Add(const char* name, const std::string& content) {
    zip_source_t* source = zip_source_buffer(zip_, content.data(), content.size(), 0);
    if (!source) return false;
    if (zip_file_add(zip_, name, source, ZIP_FL_ENC_UTF_8) < 0) {
      zip_source_free(source);
      return false;
    }
    return true;
  }
  // Writes the archive out.
  bool Close() {
    if (zip_close(zip_) != 0) return false;
    zip_ = nullptr;
    return true;
  }

 private:
  zip_t* zip_ = nullptr;
};

std::optional<std::string> CapturedWindows() {
  try {
    if (auto capture = CurrentWindowCapture()) return capture->CapturePng();
  } catch (const std::exception&) {
  }
  return std::nullopt;
}

void Tell(const std::string& text) {
  try {
    MostrarMensaje(text, 0x1040, ProgramTitle());
  } catch (const std::exception&) {
  }
}

}  // namespace

std::optional<std::string> BuildSupportArchive(const std::string& log_file,
                                               const std::string& label, const Error& e) {
  try {
    // Every member's content, kept until the archive is written.
    std::vector<std::pair<const char*, std::string>> members;
    if (auto log = ReadWholeFile(log_file)) members.emplace_back(kErrorLogName, std::move(*log));
    if (auto picture = CapturedWindows()) members.emplace_back("Captura.png", std::move(*picture));
    members.emplace_back("Informe.txt", Description(label, e));

    const DateParts now = SplitDate(Now());
    const std::string stem =
        Folder(log_file) + fmt::format("Incidencia-{:04}{:02}{:02}-{:02}{:02}{:02}", now.year,
                                       now.month, now.day, now.hour, now.minute, now.second);
    for (int attempt = 1; attempt <= 20; ++attempt) {
      const std::string path =
          stem + (attempt == 1 ? std::string() : "-" + std::to_string(attempt)) + ".zip";
      Archive archive(path);
      if (!archive.valid()) continue;  // taken, or the folder cannot be written
      for (const auto& [name, content] : members) {
        if (!archive.Add(name, content)) return std::nullopt;
      }
      if (!archive.Close()) return std::nullopt;
      return path;
    }
  } catch (const std::exception&) {
  }
  return std::nullopt;
}

void EnviarInformeSoporte(const std::string& label, const Error& e, const std::string& log_file) {
  const std::optional<std::string> archive = BuildSupportArchive(log_file, label, e);
  if (!archive) {
    Tell(std::string("No es posible preparar el informe.") + kCrLf +
         "Envíe al soporte técnico de Norvak el fichero " + log_file);
    return;
  }
  try {
    const std::string address = SupportAddress();
    if (!address.empty()) {
      MailMessage message;
      message.address = address;
      message.subject = "Incidencia en " + ProgramTitle() + " " + VersionPrograma();
      message.body = "Descripción: error " + std::to_string(e.number()) + " en " + label + ": " +
                     ErrorText(e) + "\n\nSe adjunta " + BaseName(*archive) +
                     " con el registro de errores, la descripción del equipo" +
                     " y, si la hay, una captura de las ventanas.\n";
      message.attachment = *archive;
      if (CurrentMailClient()->Compose(message)) return;
    }
  } catch (const std::exception&) {
  }
  Tell(std::string("No es posible enviar el informe automáticamente.") + kCrLf +
       "Envíe al soporte técnico de Norvak" +
       (SupportAddress().empty() ? std::string() : " (" + SupportAddress() + ")") +
       " el fichero " + *archive);
}

}  // namespace cp
