// One row so far: the lists of the scan name everything else better than a table could.
#include "plugins/built_in_plugins.hpp"

#include "plugins/scan_cache.hpp"

namespace tanrove {

BuiltInPlugins built_in_plugins() {
    ScanEntry kontakt;
    kontakt.name = "Kontakt (Native Instruments)";
    kontakt.shortName = "Kontakt";
    kontakt.id = kontakt_vst2_id;
    kontakt.instrument = true;
    const ReaperName name = reaper_name(kontakt);

    PluginTableRow row;
    row.code = kontakt_code;
    row.productName = kontakt.shortName;
    row.fxName = name.fx_name;
    row.file = "Kontakt.dll";
    row.ident = name.ident;
    return {.rows = {{row.code, row}}, .aax_only = {}, .stepped = {}};
}

}  // namespace tanrove
