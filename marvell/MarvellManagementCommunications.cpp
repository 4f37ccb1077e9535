#include "marvell/MarvellManagementCommunications.hpp"

MarvellManagementCommunications::MarvellManagementCommunications(Application& application,
                                                                 unsigned short switchAddress,
                                                                 bool noHardwareAccess)
    : _application(application), _switchAddress(switchAddress), _noHardwareAccess(noHardwareAccess) {}

MarvellManagementCommunications::~MarvellManagementCommunications() = default;
