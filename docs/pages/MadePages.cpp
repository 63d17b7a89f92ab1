#include "pages/MadePages.h"

#include "pages/Completions.h"
#include "pages/LabelsPage.h"
#include "pages/ManPages.h"
#include "pages/ReasonsPage.h"

namespace bouncecheck {

std::vector<MadePage> madePages() {
    std::vector<MadePage> pages = manPages();
    pages.push_back({"labels.md", labelsPage()});
    pages.push_back({"reasons.md", reasonsPage()});
    pages.push_back({"completions/bouncecheck.bash", bashCompletion()});
    pages.push_back({"completions/_bouncecheck", zshCompletion()});
    pages.push_back({"completions/bouncecheck.fish", fishCompletion()});
    return pages;
}

}  // namespace bouncecheck
