// Stands in for the user's browser: writes the path of the page that it is asked to open into a file.
//
//   TestBrowser OUTPUT-FILE PAGE

#include <filesystem>
#include <fstream>
#include <string>

int wmain(int argc, wchar_t** argv) {
  if (argc != 3) return 2;
  const std::filesystem::path output = argv[1];
  std::filesystem::path unfinished = output;
  unfinished += L".unfinished";
  const std::string page = std::filesystem::path(argv[2]).string();
  std::ofstream(unfinished, std::ios::binary) << page;
  std::filesystem::rename(unfinished, output);
  return 0;
}
