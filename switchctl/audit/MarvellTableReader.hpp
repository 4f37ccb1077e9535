#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "switchctl/audit/ChipImage.hpp"
#include "switchctl/audit/ChipScope.hpp"
#include "switchctl/registers/RegisterTransport.hpp"

namespace switchctl::audit {

/// Reads the VTU and the STU of an 88E6096, entry by entry. It writes to their staging and operation
/// registers, and only starts searches.
class MarvellTableReader {
public:
    /// As the operation register has them.
    enum class Operation : unsigned {
        flushAll = 1,
        vtuLoad = 3,
        vtuGetNext = 4,
        stuLoad = 5,
        stuGetNext = 6
    };

    /// All must outlive the reader.
    MarvellTableReader(ChipScope const& scope, RegisterTransport& transport, ChipImage& image);

    /// Reads what the scope has; throws CommandError (registerFailed).
    void read();

    static Operation operationIn(std::uint32_t word);

private:
    void readVtu();
    void readStu();
    void perform(Operation operation);
    std::vector<ChipImage::Field> dataFields(std::string const& prefix);
    RegisterLocation at(unsigned address) const;
    std::uint32_t readAt(unsigned address);

    ChipScope const& _scope;
    RegisterTransport& _transport;
    ChipImage& _image;
};

} // namespace switchctl::audit
