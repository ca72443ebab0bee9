#include "report/redact/Forms.h"

#include "report/catalog/AttributeIds.h"

namespace report
{
namespace
{
struct FormRow {
    uint32_t group, attribute;
    Form form;
};

// Identifying attributes that are no plain value, and Start Name, which is the User Name of an account.
constexpr FormRow kForms[] = {
    {GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_COMMAND_LINE, Form::LIST},
    {GROUP_LOGICAL_DRIVE, LOGICAL_DRIVE_UUID, Form::MAPPER_ID},
    {GROUP_PARTITION, PARTITION_OPTIONS, Form::LIST},
    {GROUP_IP_ADDRESS, IP_ADDRESS_HOSTNAME, Form::HOST},
    {GROUP_IP_ADDRESS, IP_ADDRESS_DOMAIN, Form::DOMAIN_NAME},
    {GROUP_ROUTE, ROUTE_DESTINATION, Form::DESTINATION},
    {GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_HOSTNAME, Form::HOST},
    {GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS, Form::HOST},
    {GROUP_PC_SYSTEM_PARAMS, PC_SYSTEM_PARAMS_COMPUTER_NAME, Form::HOST},
    {GROUP_PC_SYSTEM_PARAMS, PC_SYSTEM_PARAMS_USER_NAME, Form::PERSON},
    {GROUP_PC_SYSTEM_PARAMS, PC_SYSTEM_PARAMS_DOMAIN_NAME, Form::DOMAIN_NAME},
    {GROUP_PC_SYSTEM_PARAMS, PC_SYSTEM_PARAMS_WORKGROUP_NAME, Form::DOMAIN_NAME},
    {GROUP_PRINTER, PRINTER_PORT_NAME, Form::URI},
    {GROUP_PRINTER, PRINTER_DEVICE_URI, Form::URI},
    {GROUP_SERVICE_INFO, SERVICE_INFO_START_NAME, Form::PERSON},
    {GROUP_USER_ACCOUNT_INFO, USER_ACCOUNT_INFO_USER_NAME, Form::PERSON},
    {GROUP_USER_ACCOUNT_INFO, USER_ACCOUNT_INFO_DOMAIN, Form::HOST},
    {GROUP_USER_ACCOUNT_INFO, USER_ACCOUNT_INFO_DESCRIPTION, Form::TEXT},
    {GROUP_USER_ACCOUNT_INFO, USER_ACCOUNT_INFO_HOME, Form::HOME},
    {GROUP_MACHINE_IDENTITY, MACHINE_IDENTITY_MACHINE_KEY, Form::MACHINE_KEY},
};
} // namespace

Form formOf(const GroupRows& group, const Value& value)
{
    const Attribute* attribute = value.attribute;
    if (group.group == nullptr || attribute == nullptr || !std::holds_alternative<std::string>(value.content))
        return Form::NONE;
    for (const FormRow& row : kForms)
        if (row.group == group.group->id && row.attribute == attribute->id)
            return row.form;
    if (attribute->isIdentifyingIfAddress)
        return Form::INTERFACE;
    if (attribute->isIdentifyingIfHostOrUser)
        return Form::MOUNT;
    return attribute->isIdentifying ? Form::VALUE : Form::NONE;
}
} // namespace report
