// The program menu of a desktop host.
#include "program/program_menu.h"

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/resources.h"

namespace zelkora::desk {

namespace {

// The program menu in memory, every other INI file the system's.
class MenuIniFiles : public platform::IniFiles {
 public:
  MenuIniFiles(std::shared_ptr<platform::IniFiles> system, Text menu) : system_(std::move(system)) {
    menu_.put(kMenuFile, menu);
  }
  Text read(TextView section, TextView key, TextView default_value, TextView file) const override {
    if (equal_text(file, kMenuFile, Compare::Text)) {
      return menu_.read(section, key, default_value, kMenuFile);
    }
    return system_ ? system_->read(section, key, default_value, file) : Text(default_value);
  }
  bool write(TextView section, TextView key, std::optional<TextView> value,
             TextView file) override {
    return system_ && !equal_text(file, kMenuFile, Compare::Text) &&
           system_->write(section, key, value, file);
  }

 private:
  std::shared_ptr<platform::IniFiles> system_;
  platform::headless::MemoryIniFiles menu_;
};

constexpr std::size_t kMaxMenuBytes = std::size_t{1} << 20;

}  // namespace

void add_program_menu(platform::Platform& platform) {
  const std::optional<std::string> menu =
      platform::read_resource(platform.resources, to_utf8(kMenuFile), kMaxMenuBytes);
  platform.ini =
      std::make_shared<MenuIniFiles>(platform.ini, codepage::from_ansi(menu.value_or("")));
}

}  // namespace zelkora::desk
