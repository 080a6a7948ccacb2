#include "gms/pgf_file.h"

namespace plx {

void PgfWriter::header(std::string_view title, const std::vector<std::string>& layers, int contacts) {
    out_.text(title).text("\nElevation ");
    for (const std::string& layer : layers) out_.text(layer).put(' ');
    out_.put('\n').integer(contacts).text(" 1\n");
}

void PgfWriter::contact(double x, double y, double z, int layer, std::string_view bore) {
    out_.fixed(x).put(' ').fixed(y).put(' ').fixed(z).put(' ').integer(layer).put(' ').text(bore).put('\n');
}

}  // namespace plx
