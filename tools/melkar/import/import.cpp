#include "import.h"

#include "forms.h"

#include <algorithm>

namespace melkar::importer {

const std::vector<Form>& Forms() {
    static const std::vector<Form> forms = {
        {"csv", "rows with a head row that names the columns, a row a day or more", ImportCsv},
        {"fhir", "a bundle of Observations, FHIR R4 in JSON, or a line for each (.ndjson)", ImportFhir},
        {"epochs", "rows of a time and a level of intensity, each of a second to two minutes", ImportEpochs},
    };
    return forms;
}

const Form* FindForm(const std::string& name) {
    const auto found =
        std::find_if(Forms().begin(), Forms().end(), [&](const Form& form) { return name == form.name; });
    return found != Forms().end() ? &*found : nullptr;
}

} // namespace melkar::importer
