#include "NetUtilities/Files/ClientFolders.h"

#include <system_error>

void CreateFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::create_directory(folder, ignored);
}

std::filesystem::path CreateProductFolder(const std::filesystem::path& base) {
  const std::filesystem::path vendor = base / kVendorFolder;
  CreateFolder(vendor);
  std::filesystem::path product = vendor / kProductFolder;
  CreateFolder(product);
  return product;
}
