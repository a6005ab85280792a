#include "composition/MenuTitles.h"

#include <map>

#include "model/TrimmedText.h"
namespace zd::MenuTitles {

namespace {

std::string trimmed(std::string_view text) {
    return std::string(trimmedText(text));
}

// The system menu bar's own words for File, Edit, View, Window and Help in each language of
// the catalog.
const std::map<std::string, std::vector<std::string>, std::less<>>& table() {
    static const std::map<std::string, std::vector<std::string>, std::less<>> titles{
        {"en", {"File", "Edit", "View", "Window", "Help"}},
        {"es", {"Archivo", "Edición", "Visualización", "Ventana", "Ayuda"}},
        {"fr", {"Fichier", "Édition", "Présentation", "Fenêtre", "Aide"}},
        {"de", {"Ablage", "Bearbeiten", "Darstellung", "Fenster", "Hilfe"}},
        {"it", {"Archivio", "Modifica", "Vista", "Finestra", "Aiuto"}},
        {"pt-BR", {"Arquivo", "Editar", "Visualizar", "Janela", "Ajuda"}},
        {"ja", {"ファイル", "編集", "表示", "ウインドウ", "ヘルプ"}},
        {"ko", {"파일", "편집", "보기", "윈도우", "도움말"}},
        {"zh-Hans", {"文件", "编辑", "显示", "窗口", "帮助"}},
        {"zh-Hant", {"檔案", "編輯", "顯示方式", "視窗", "輔助說明"}},
        {"nl", {"Archief", "Wijzig", "Weergave", "Venster", "Help"}},
        {"sv", {"Arkiv", "Redigera", "Visa", "Fönster", "Hjälp"}},
        {"ru", {"Файл", "Правка", "Вид", "Окно", "Справка"}},
        {"tr", {"Dosya", "Düzen", "Görüntü", "Pencere", "Yardım"}},
        {"pl", {"Plik", "Edycja", "Widok", "Okno", "Pomoc"}},
        {"ar", {"ملف", "تحرير", "عرض", "نافذة", "مساعدة"}},
    };
    return titles;
}

}  // namespace

std::optional<std::vector<std::string>> fromMenuBars(
    const std::optional<std::vector<std::vector<std::string>>>& bars) {
    if (!bars)
        return std::nullopt;
    for (const auto& bar : *bars) {
        std::vector<std::string> titles;
        for (const auto& name : bar) {
            if (std::string title = trimmed(name); !title.empty())
                titles.push_back(std::move(title));
        }
        if (!titles.empty())
            return titles;
    }
    return std::vector<std::string>{};
}

const std::vector<std::string>& defaults(std::string_view languageCode) {
    static const std::vector<std::string> none;
    const auto& titles = table();
    if (auto it = titles.find(languageCode); it != titles.end())
        return it->second;
    const std::string_view primary = languageCode.substr(0, languageCode.find_first_of("-_"));
    if (primary == "pt")
        return titles.at("pt-BR");
    if (auto it = titles.find(primary); it != titles.end())
        return it->second;
    return none;
}

std::vector<std::string> forPicture(const std::optional<std::vector<std::string>>& accessible,
                                    const std::vector<std::string>& recognised,
                                    const std::vector<std::string>& configured,
                                    std::string_view languageCode) {
    if (accessible && !accessible->empty())
        return *accessible;
    if (!accessible && !recognised.empty())
        return recognised;
    if (!configured.empty())
        return configured;
    return defaults(languageCode);
}

}  // namespace zd::MenuTitles
