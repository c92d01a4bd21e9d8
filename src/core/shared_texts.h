// The texts that several tables have in common. A form is written with each of them as with any other text, whole; here
// they are named once more so that the library has them once. A text that is missing here lies with every table that
// says it, and nothing else changes.
#ifndef QMV_CORE_SHARED_TEXTS_H
#define QMV_CORE_SHARED_TEXTS_H

namespace qmv {

inline constexpr char kSharedTexts[] =
    "select count(*) from %q;\0"
    "select * from %q;\0"
    "select * from %q ;\0"
    "select * from %q where InstanceID='%q';\0"
    "select * from %q where Name='%q';\0"
    "select * from %q where Name='%.256q';\0"
    "select * from %q where DeviceID='%q';\0"
    "select * from %q where EntityID=%i and EntityInstance=%i;\0"
    "select * from %q where SensorNum='%i' and \t\t\t\tDeviceID='%q' and OwnerLUN='%i' and OwnerID='%i';\0"
    "select * from %q where FruIDSlaveAddr=%i and \t\t\t\tDeviceAccessAddr=%i and LUNBusID=%i and "
    "\t\t\t\tChannelNumber=%i;\0"
    "update %q set InstanceID='%.256q', ElementName='%.256q' where InstanceID='%.256q';\0"

    "[%s:%d]No records found\0"
    "[%s:%d]No Records Found\0"
    "[%s:%d]Successfully returned count %d\0"
    "[%s:%d]Successfully returns the fru-full_sdr count %d\0"
    "[%s:%d]Successfully return the no. of sensors present\0"

    "[%s:%d]Fail to get sensor records\0"
    "[%s:%d]Get All compact SDR records from database\0"
    "[%s:%d]Get compact sdr from database\0"
    "[%s:%d]Successfully got the Sensor record\0"
    "[%s:%d]Successfully got all the sensors\0"

    "[%s:%d]Fail to get physical asset cap. record. SQLite stmt is NULL\0"
    "[%s:%d]Fail to get the physical asset cap. record\0"
    "[%s:%d]Get Physical Asset capabilities record from database\0"
    "[%s:%d]Physical Asset record is already present with that key\0"
    "[%s:%d]Successfully update the Physical Asset cap. record\0"
    "[%s:%d]Fail to get concrete collection records\0"
    "[%s:%d]Get all concrete collection records from database\0"
    "[%s:%d]Successfully got all concrete collections %d\0"

    "[%s:%d]Get all role records from database\0"
    "[%s:%d]Fail to get privilege records\0"
    "[%s:%d]Get all privilege records from database\0"
    "[%s:%d]Successfully got all privileges %d\0"
    "[%s:%d]Get all regprofile from database\0"
    "[%s:%d]Get Registered profile record from database\0"
    "[%s:%d]Get assign role from database\0"
    "[%s:%d]AssignRole record is already present with that key\0"
    "[%s:%d]Successfully update the account_management_service record\0"
    "[%s:%d]Successfully got acc_mgt\0"
    "[%s:%d]Successfully got all elec\0"
    "[%s:%d]Error info is already present with that key\0";

}  // namespace qmv

#endif
