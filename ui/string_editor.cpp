#include "ui/string_editor.h"
namespace zarvo {
static Pattern p;
StringEditor::StringEditor(const EditorServices&, Mode, Pattern pattern, const FunctionList&, bool,
                           QWidget* parent)
    : QDialog(parent) {
  p = pattern;
}
StringEditor::~StringEditor() = default;
const Pattern& StringEditor::Edited() const { return p; }
SubpatternLibrary::SubpatternLibrary(std::string a, std::string b)
    : installation_path_(a), user_folder_(b) {}
}  // namespace zarvo
