// Comparing the buffer with a file.
#include "workbench/comparison_dialog.h"
#include "workbench/difference_words.h"
#include "workbench/long_work.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <filesystem>

namespace tamrix::workbench {

void main_frame::compare_with(const std::string& path)
{
    const wxString trouble = "The file cannot be compared";
    attempt(trouble, [&] {
        if (session_.library().detect_pld(path.c_str()) != TAMRIX_NO_PLD)
            return fail(trouble, path + " has no bytes: it is a file of a logic device.");
        const int detected = session_.library().detect_format(path.c_str(), nullptr);
        tamrix_format format{};
        if (detected < 0 || session_.library().describe_format(detected, &format) == 0)
            return fail(trouble, path + " cannot be read.");
        const host::file_report report = inspect(path, format.name);
        if (!accepts(report, "Compare with it", "not compared")) return;
        editing::comparison comparison{document_.bytes(), report.image};
        const bool ended = work_in_steps(
            this, "Compare", L"Comparing the buffer with the file…", [&] { return comparison.look(); },
            [&] { return comparison.percent(); });
        if (!ended) return;
        log_->remark("Compared with " + path + ": " + difference_words(comparison.counts()));
        const std::string name = std::filesystem::path{path}.filename().string();
        comparison_dialog{this, name, document_.bytes(), report.image, comparison}.ShowModal();
        hex_view_->SetFocus();
    });
}

}  // namespace tamrix::workbench
